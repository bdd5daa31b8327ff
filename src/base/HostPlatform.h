#ifndef HOSTPLATFORM_H
#define HOSTPLATFORM_H

#include "brivantbase_export.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class QDomElement;

/*! One message to the user, as MSG_Scope reports it. */
struct HostReport {
    QString context; /*!< Scope name; empty for a message built from a source text. */
    QString source; /*!< English text, markers unfilled; empty for a message built from a context. */
    QString text; /*!< Translated and filled in. */
    /*! How to show it, an MSG_Scope::Action: 0 a notice, 2 an error, 4 a change that was refused, 5 for the log alone.
     */
    int action = 0;
    /*! The kind of error, an ErrorCode::Type, of which the library uses 0 (none) alone. */
    int errorType = 0;
};

/*! What a host, or a test, tells the base services.

    Each field is read at the moment it is needed, so that a change takes effect at the next call. Not
    synchronised: used from the thread that uses the stores. The functions must not throw. */
class BRIVANT_BASE_EXPORT HostPlatform {
public:
    /*! What the product was started as: the words "full", "paint" and "scan" of definitions. */
    enum Mode : int { FullMode = 0, PaintMode = 2, ScanMode = 3 };
    /*! The language in which Panovia's own terms for sheets are locked on. */
    static constexpr int TermStyleLanguage = 4;

    /*! The one instance; lives as long as the process. */
    [[nodiscard]] static HostPlatform &current();

    /*! Folder that holds "resources"; when empty, the one that was built or installed with the library. */
    QString installFolder;
    /*! Folders by special folder number. A number that is missing gives a per-user folder; an empty text says
        that there is no such folder. */
    QMap<int, QString> specialFolders;
    /*! Turns a stored path into the one to open; when empty, paths are opened as they are. */
    std::function<QString(QString const &)> remapPath;

    QStringList featureKeywords; /*!< Those that hold: what the attribute "feature" of definitions asks for. */
    bool hasMorphing = false; /*!< Without it, definitions whose key contains MORPH are passed over. */
    bool hasPanoviaPreferenceUI = false; /*!< Chooses Panovia's definition files and preference sets. */
    bool appIsPanovia = false; /*!< The product is Panovia. */
    /*! Removes the elements below a root that "feature" conditions exclude, by rules of the host's own; called once a
        load, with all definition files in one document, the feature keywords and false. When empty, those of
        AC_XML::trimConditions() hold. */
    std::function<bool(QDomElement &, QStringList const &, bool)> trimConditions;
    int mode = FullMode; /*!< A Mode; any other number counts as FullMode. */
    int languageID = 0; /*!< The language of the user interface; TermStyleLanguage matters to the library. */

    /*! Available fonts; when not set, the system's families if a QGuiApplication exists, else none. */
    std::optional<QStringList> fonts;
    unsigned int defaultFontId = 0; /*!< Index in the list of fonts. */

    /*! Loads write nothing: a damaged file stays as it is, and its backup is read where it stands. For processes that
        only look. */
    bool readOnly = false;

    /*! Gives a text of a definition in the language of the user; an empty one where there is no translation. \a key is
        the preference whose label, description or choice it is, and empty for groups and units, which many share. Asked
        by editors; when empty, they show the texts themselves. */
    std::function<QString(QString const &key, QString const &text)> translateDefinition;

    /*! Receives each report once; when empty, reports go to the logging category "brivant.preference". */
    std::function<void(HostReport const &)> report;
};

#endif
