#ifndef VALUEVERBS_H
#define VALUEVERBS_H

struct Call;

/*! The verbs that show, compare and set many values at once. */
namespace ValueVerbs {
void diff(Call const &call);
void dump(Call const &call);
void load(Call const &call);
} // namespace ValueVerbs

#endif
