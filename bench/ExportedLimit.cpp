#include "ExportedLimit.h"

int exportedInt = 3;
