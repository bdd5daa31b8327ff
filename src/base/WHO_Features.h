#ifndef WHO_FEATURES_H
#define WHO_FEATURES_H

#include "brivantbase_export.h"

#include <QStringList>

/*! Features of the running application, as the host tells them. */
class BRIVANT_BASE_EXPORT WHO_Features {
public:
    /*! The feature keywords that definition files can ask for; the argument is not used. */
    [[nodiscard]] static QStringList keywords(bool all);
    /*! HostPlatform::hasMorphing. */
    [[nodiscard]] static bool hasMorphing();
    /*! HostPlatform::hasPanoviaPreferenceUI. */
    [[nodiscard]] static bool hasPanoviaPreferenceUI();
};

#endif
