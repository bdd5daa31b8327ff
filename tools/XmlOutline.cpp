#include "XmlOutline.h"

#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

XmlOutline::XmlOutline(QByteArray const &bytes)
{
    QXmlStreamReader reader(bytes);
    reader.setNamespaceProcessing(false);
    for (int depth = 0; !reader.atEnd();) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            ++depth;
            if (depth == 1) {
                root = reader.qualifiedName().toString();
                rootLine = int(reader.lineNumber());
                rootColumn = int(reader.columnNumber());
            }
            hasCategories = hasCategories || depth > 2 || (depth == 2 && reader.qualifiedName() == "category"_L1);
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        case QXmlStreamReader::Characters:
            hasText = hasText || (depth == 1 && !reader.isWhitespace());
            break;
        default:
            break;
        }
    }
}

QString rootName()
{
    return u"preferences"_s;
}
