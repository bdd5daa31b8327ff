#include "PR_XmlFile_p.h"

#include <QFile>

PR_XmlFile PR_XmlFile::read(QString const &path)
{
    PR_XmlFile result;
    result.path = path;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        result.error = file.errorString();
        return result;
    }
    bool const parsed =
        result.document.setContent(file.readAll(), false, &result.error, &result.errorLine, &result.errorColumn);
    result.state = parsed ? Read : NotXml;
    return result;
}
