#ifndef PL_FILESPEC_H
#define PL_FILESPEC_H

#include "UT_String.h"
#include "brivantbase_export.h"

/*! The path of a file or a folder. */
class BRIVANT_BASE_EXPORT PL_FileSpec {
public:
    enum SpecialFolderType : int {
        DefaultLocalCacheFolder = 3,
        LocalPreferenceFolder = 7,
        LocalCacheSettingsFolder = 9
    };

    PL_FileSpec() = default;
    explicit PL_FileSpec(UT_String const &path);

    /*! Points at a special folder: the host's (HostPlatform::specialFolders), else one of the user's own. */
    void IFileSpec(SpecialFolderType folder);

    /*! The path; empty when there is none. */
    UT_String GetFilePath() const { return m_path; }
    /*! True for an existing folder. */
    bool IsFolder() const;

private:
    UT_String m_path;
};

#endif
