#ifndef DEFINITIONVERBS_H
#define DEFINITIONVERBS_H

struct Call;

/*! Verbs for those who write definitions and for administrators. None of them changes anything. */
namespace DefinitionVerbs {
void check(Call const &call);
void explain(Call const &call);
} // namespace DefinitionVerbs

#endif
