#ifndef PL_FILESPEC_H
#define PL_FILESPEC_H

#include "UT_String.h"
#include "brivantbase_export.h"

/*! The path of a file or a folder. */
class BRIVANT_BASE_EXPORT PL_FileSpec {
public:
    /*! Special folders by their number in HostPlatform::specialFolders. */
    enum SpecialFolderType : int {
        DefaultLocalCacheFolder = 3, /*!< Holds the cache root, unless the user has chosen one. */
        LocalPreferenceFolder = 7, /*!< Holds the file of the machine-local settings. */
        LocalCacheSettingsFolder = 9 /*!< Holds the file of the local cache store. */
    };

    /*! No path. */
    PL_FileSpec() = default;
    /*! The path as it is; nothing is looked up. */
    explicit PL_FileSpec(UT_String const &path);

    /*! Points at a special folder: the host's (HostPlatform::specialFolders), else one of the user's own. */
    void IFileSpec(SpecialFolderType folder);

    /*! The path; empty when there is none. */
    [[nodiscard]] UT_String GetFilePath() const { return m_path; }
    /*! True for an existing folder. */
    [[nodiscard]] bool IsFolder() const;

private:
    UT_String m_path;
};

#endif
