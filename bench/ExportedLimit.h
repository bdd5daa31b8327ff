#ifndef EXPORTEDLIMIT_H
#define EXPORTEDLIMIT_H

extern int exportedInt;

#endif
