#include "InputFile.h"

#include "ValueText.h"
#include "Verb.h"

#include <QFile>

#include <cstdio>

using namespace Qt::StringLiterals;

QByteArray InputFile::bytes(QString const &name)
{
    qint64 const limit = 16 << 20; // a hundred times the largest that is known; a device may never end
    auto const failure = [&name](QString const &reason) {
        return Failure{ ExitStatus::CannotRead, u"%1 cannot be read: %2"_s.arg(ValueText::escaped(name), reason) };
    };
    QFile file(name);
    bool const isOpen = name == "-"_L1 ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!isOpen)
        throw failure(file.errorString());
    QByteArray bytes;
    while (bytes.size() <= limit) {
        QByteArray const piece = file.read(limit + 1 - bytes.size());
        if (piece.isEmpty())
            break;
        bytes.append(piece);
    }
    if (file.error() != QFile::NoError)
        throw failure(file.errorString());
    if (bytes.size() > limit)
        throw failure(u"it has more than %1 bytes."_s.arg(limit));
    return bytes;
}
