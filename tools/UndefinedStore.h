#ifndef UNDEFINEDSTORE_H
#define UNDEFINEDSTORE_H

#include "PR_Preference.h"

/*! The user's values without any definitions, in which a font is but a text. */
class UndefinedStore final : public PR_Preference {
public:
    UndefinedStore(QString const &name, bool local)
        : PR_Preference(name, local, false)
    {
        init();
    }

protected:
    Error initPreferences() override
    {
        clear();
        return NoError;
    }
};

#endif
