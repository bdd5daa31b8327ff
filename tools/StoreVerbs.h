#ifndef STOREVERBS_H
#define STOREVERBS_H

struct Call;

/*! The verbs that read and write one store. */
namespace StoreVerbs {
void list(Call const &call);
void get(Call const &call);
void describe(Call const &call);
void set(Call const &call);
void reset(Call const &call);
} // namespace StoreVerbs

#endif
