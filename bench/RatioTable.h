#ifndef RATIOTABLE_H
#define RATIOTABLE_H

/*! Declares that the benchmark \a measured is to be compared with the benchmark \a limit of the same run: at most
    \a goal times its time per iteration, a processor's time or, for work that waits, the wall's. Call it while the
    program's static objects are built. */
int compareWithLimit(char const *workload, char const *measured, char const *limit, double goal);

#endif
