#ifndef RATIOTABLE_H
#define RATIOTABLE_H

class QString;

/*! Declares that the benchmark \a measured is to be compared with the benchmark \a limit of the same run: its processor
    time is to be at most \a goal times that of \a limits of the limit. A goal of 0 is none: the figure alone is
   printed. Call it while the program's static objects are built. */
int compareWithLimit(char const *workload, char const *measured, char const *limit, double goal, double limits = 1);

/*! Does in this process, for the first time, what the benchmarks of first loads measure, with the files of a key set,
   and prints the processor time in nanoseconds and the page faults; the exit status. */
int runFirstOfProcess(QString const &what, QString const &folder);

#endif
