#include "PR_XmlFile_p.h"

#include <QFile>
#include <QFileInfo>

PR_FileState PR_FileState::of(QString const &path)
{
    QFileInfo const info(path);
    return info.exists() ? PR_FileState{ info.lastModified(), info.size() } : PR_FileState{};
}

PR_XmlFile PR_XmlFile::read(QString const &path)
{
    PR_XmlFile result;
    result.path = path;
    QFile file(path);
    // A device is no file of preferences, and may never end.
    bool const opened = file.open(QIODevice::ReadOnly) && !file.isSequential();
    result.version = PR_FileState::of(path);
    QByteArray const bytes = opened ? file.readAll() : QByteArray();
    if (!opened || file.error() != QFile::NoError) {
        result.error = file.errorString();
        return result;
    }
    bool const parsed = result.document.setContent(bytes, false, &result.error, &result.errorLine, &result.errorColumn);
    result.state = parsed ? Read : NotXml;
    return result;
}
