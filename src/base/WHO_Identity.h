#ifndef WHO_IDENTITY_H
#define WHO_IDENTITY_H

#include "brivantbase_export.h"

/*! What the running application was started as. */
class BRIVANT_BASE_EXPORT WHO_Identity {
public:
    /*! Host mode: 2 paint, 3 scan, any other full. */
    [[nodiscard]] static int mode();
};

#endif
