# Makes a page of the reference from the table of the cached values, src/cache/PR_CachedValues.def.
1i# Cached values {#cached_values}\
\
The values that the main store keeps in static variables: `PR_CachedPreferences::get<Accessor>()` gives the value,\
`get<Accessor>Key()` the key. The default counts only while the store has no fitting item under the key.
s|^// ([A-Z][a-z]+( [a-z]+)*)$|\
## \1\
\
\| accessor \| type \| key \| read by \| default \|\
\|---\|---\|---\|---\|---\||p
s|^CACHED_REF\(([^,]*), ([^,]*), "([^,]*)", ([^,]*)\)$|\| \2 \| \1 \| \3 \| \4 \| \||p
s|^CACHED_OR\(([^,]*), ([^,]*), "([^,]*)", ([^,]*), (.*)\)$|\| \2 \| \1 \| \3 \| \4 \| \5 \||p
