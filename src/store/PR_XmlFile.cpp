#include "PR_XmlFile_p.h"
#include "PR_XmlScan_p.h"

#include "NativePath_p.h"
#include "tufile.h"

#include <QCoreApplication>
#include <QFile>

namespace fs = std::filesystem;

namespace {
// A document takes some 3000 bytes an element.
constexpr qsizetype maximumElementsOfDocument = 200000;
} // namespace

PR_FileState PR_FileState::of(QString const &path)
{
    std::error_code noTime;
    std::error_code noSize;
    PR_FileState const state{ fs::last_write_time(nativePath(path), noTime),
        qint64(fs::file_size(nativePath(path), noSize)) };
    return noTime || noSize ? PR_FileState() : state;
}

PR_XmlFile PR_XmlFile::read(QString const &path)
{
    PR_XmlFile result;
    result.path = path;
    result.error = tufile::whyNotReadable(path);
    if (!result.error.isEmpty())
        return result;
    QFile file(path);
    bool const opened = file.open(QIODevice::ReadOnly);
    if (opened) {
        result.version = PR_FileState::of(path);
        result.bytes = file.readAll();
    }
    if (!opened || file.error() != QFile::NoError) {
        result.error = file.errorString();
        return result;
    }
    PR_XmlScan const scan(result.bytes);
    result.elementCount = scan.elementCount();
    bool const reasonable = scan.isReasonable();
    result.state = reasonable && scan.isEncodingKnown() ? Read : NotXml;
    if (!scan.isEncodingKnown())
        result.error = QCoreApplication::translate("PR_XmlFile", "declares an encoding that is not supported");
    else if (!reasonable)
        result.error = QCoreApplication::translate(
            "PR_XmlFile", "nested too deeply, too many attributes, or too large for its entities");
    return result;
}

PR_XmlFile PR_XmlFile::readDocument(QString const &path)
{
    PR_XmlFile result = read(path);
    if (result.state != Read)
        return result;
    int line = 0;
    int column = 0;
    bool parsed = false;
    if (result.elementCount > maximumElementsOfDocument)
        result.error = QCoreApplication::translate("PR_XmlFile", "too many elements");
    else
        parsed = result.document.setContent(result.bytes, false, &result.error, &line, &column);
    result.state = parsed ? Read : NotXml;
    if (!parsed)
        result.document.clear(); // it holds what stands before the fault, which must not count
    result.errorLine = line;
    result.errorColumn = column;
    result.bytes.clear();
    return result;
}
