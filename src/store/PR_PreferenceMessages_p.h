#ifndef PR_PREFERENCEMESSAGES_P_H
#define PR_PREFERENCEMESSAGES_P_H

#include "MSG_Scope.h"
#include "PR_Preference.h"

#include <QCoreApplication>

/*! What stores tell the user. The English text is also the source text of the translations. */
namespace PR_PreferenceMessages {
//: While reading. %1 is a path, here and in all messages below.
constexpr char const *CannotOpenForReading = QT_TRANSLATE_NOOP("PR_Preference", "Unable to open preference file (%1)");
constexpr char const *CannotParse = QT_TRANSLATE_NOOP("PR_Preference", "Unable to parse prefereces file (%1)");
constexpr char const *NoFileSpecified =
    QT_TRANSLATE_NOOP("PR_Preference", "TUPreference::load: No preference file specified");
constexpr char const *FileNotFound = QT_TRANSLATE_NOOP("PR_Preference", "Preference file not found: %1");
constexpr char const *DefaultFileNotFound =
    QT_TRANSLATE_NOOP("PR_Preference", "Default preference file not found: %1 ");
constexpr char const *BackupRestored = QT_TRANSLATE_NOOP(
    "PR_Preference", "Preference file %1 is empty or corrupted.\nBackup preference file has been restored.");
constexpr char const *BackupRead =
    QT_TRANSLATE_NOOP("PR_Preference", "Preference file %1 is empty or corrupted.\nIts backup has been read instead.");
constexpr char const *DefaultsLoaded = QT_TRANSLATE_NOOP(
    "PR_Preference", "Preference file %1 is empty or corrupted.\nDefault preferences will be loaded instead.");
//: While saving.
constexpr char const *CannotOpenForWriting = QT_TRANSLATE_NOOP("PR_Preference", "Unable to open preference file: %1");
constexpr char const *WriteError = QT_TRANSLATE_NOOP("PR_Preference", "Error while writing preference file: %1");
constexpr char const *NotInitialized = QT_TRANSLATE_NOOP("PR_Preference", "Could not initialize preferences.");

/*! A message or a report from one of these texts; its marker is filled by arg(). */
inline MSG_Text text(char const *source)
{
    return MSG_Text(QString::fromLatin1(source), PR_Preference::tr(source));
}

inline void report(char const *source, MSG_Scope::Action action)
{
    MSG_Scope(QString::fromLatin1(source), PR_Preference::tr(source), action);
}

inline void report(char const *source, MSG_Scope::Action action, QString const &path)
{
    MSG_Scope(QString::fromLatin1(source), PR_Preference::tr(source), action).arg(path);
}
} // namespace PR_PreferenceMessages

#endif
