#ifndef WHO_FEATURES_H
#define WHO_FEATURES_H

#include "brivantbase_export.h"

#include <QStringList>

/*! Features of the running application, as the host tells them. */
class BRIVANT_BASE_EXPORT WHO_Features {
public:
    /*! The feature keywords that definition files can ask for; the argument is not used. */
    static QStringList keywords(bool all);
    /*! HostPlatform::hasMorphing. */
    static bool hasMorphing();
    /*! HostPlatform::hasPanoviaPreferenceUI. */
    static bool hasPanoviaPreferenceUI();
};

#endif
