#ifndef PR_PREFCONSTANTS_H
#define PR_PREFCONSTANTS_H

#include "brivantpreference_export.h"

#include <QString>

/*! Names of XML attributes and documents; they live as long as the library is loaded. */
extern BRIVANT_PREFERENCE_EXPORT QString const kId; /*!< "id": the key of an item element. */
extern BRIVANT_PREFERENCE_EXPORT QString const kValue; /*!< "value" */
extern BRIVANT_PREFERENCE_EXPORT QString const kRed; /*!< "red" */
extern BRIVANT_PREFERENCE_EXPORT QString const kGreen; /*!< "green" */
extern BRIVANT_PREFERENCE_EXPORT QString const kBlue; /*!< "blue" */
extern BRIVANT_PREFERENCE_EXPORT QString const kAlpha; /*!< "alpha" */
extern BRIVANT_PREFERENCE_EXPORT QString const kPref; /*!< "preferences": root of a user file. */
extern BRIVANT_PREFERENCE_EXPORT QString const kDocument; /*!< "UserPreferences ", with a trailing blank. */

#endif
