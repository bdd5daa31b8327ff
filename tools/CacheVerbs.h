#ifndef CACHEVERBS_H
#define CACHEVERBS_H

struct Call;

/*! Verbs about what the library keeps beside the preferences themselves. None of them changes anything. */
namespace CacheVerbs {
void cached(Call const &call);
void scenes(Call const &call);
} // namespace CacheVerbs

#endif
