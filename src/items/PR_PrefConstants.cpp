#include "PR_PrefConstants.h"

QString const kId = QStringLiteral("id");
QString const kValue = QStringLiteral("value");
QString const kRed = QStringLiteral("red");
QString const kGreen = QStringLiteral("green");
QString const kBlue = QStringLiteral("blue");
QString const kAlpha = QStringLiteral("alpha");
QString const kPref = QStringLiteral("preferences");
QString const kDocument = QStringLiteral("UserPreferences ");
