#include "PR_Conditions_p.h"

#include "HostPlatform.h"
#include "WHO_Features.h"
#include "WHO_Identity.h"

namespace {
#if defined(Q_OS_WIN)
constexpr QStringView thisPlatform = u"windows";
#elif defined(Q_OS_MACOS)
constexpr QStringView thisPlatform = u"macosx";
#else
constexpr QStringView thisPlatform = u"linux";
#endif
} // namespace

bool PR_Conditions::admitsPlatform(QStringView condition)
{
    return condition.isNull() || PR_Condition(condition).holds(thisPlatform);
}

bool PR_Conditions::admitsMode(QStringView condition)
{
    if (condition.isNull())
        return true;
    int const mode = WHO_Identity::mode();
    return PR_Condition(condition).holds(mode == HostPlatform::PaintMode ? QStringView(u"paint")
            : mode == HostPlatform::ScanMode                             ? QStringView(u"scan")
                                                                         : QStringView(u"full"));
}

bool PR_Conditions::admitsKey(QString const &key)
{
    return !key.contains(QLatin1String("MORPH")) || WHO_Features::hasMorphing();
}

QStringList const &PR_Conditions::platforms()
{
    static QStringList const words{ QStringLiteral("windows"), QStringLiteral("macosx"), QStringLiteral("linux") };
    return words;
}

QStringList const &PR_Conditions::modes()
{
    static QStringList const words{ QStringLiteral("full"), QStringLiteral("paint"), QStringLiteral("scan") };
    return words;
}
