#ifndef OSW_LANG_H
#define OSW_LANG_H

#include "brivantbase_export.h"

/*! Language of the user interface. */
class BRIVANT_BASE_EXPORT OSW_Lang {
public:
    /*! The number of the language (HostPlatform::languageID). */
    [[nodiscard]] static int languageID();
};

#endif
