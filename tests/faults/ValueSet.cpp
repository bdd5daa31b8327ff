#include "ValueSet.h"

#include "PR_Preference.h"

#include <QDomDocument>
#include <QFile>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {
// Longer than a file system block, so that a file that is cut short has many lengths.
QString filling(int number)
{
    return number == ValueSet::Default ? u"0"_s : QString::number(number).repeated(1500);
}

int setOf(QString const &first, int second, QString const &third)
{
    bool isNumber = false;
    int const number = first.toInt(&isNumber);
    return isNumber && second == number && third == filling(number) ? number : ValueSet::Mixed;
}
} // namespace

QByteArray ValueSet::definitions()
{
    return "<preferences><category id=\"General\"><string id=\"FIRST\" value=\"0\"/>"
           "<int id=\"SECOND\" value=\"0\" minValue=\"0\" maxValue=\"1000000\"/><string id=\"THIRD\" value=\"0\"/>"
           "</category></preferences>";
}

void ValueSet::write(PR_Preference &store, int number)
{
    store.setStringValue(u"FIRST"_s, QString::number(number));
    store.setIntValue(u"SECOND"_s, number);
    store.setStringValue(u"THIRD"_s, filling(number));
}

int ValueSet::read(PR_Preference const &store)
{
    return setOf(
        store.getStringValue(u"FIRST"_s, {}), store.getIntValue(u"SECOND"_s, -1), store.getStringValue(u"THIRD"_s, {}));
}

QByteArray ValueSet::userFile(int number)
{
    QByteArray const text = QByteArray::number(number);
    return "<preferences><string id=\"FIRST\" value=\"" + text
        + "\"/><string id=\"KEPT\" value=\"kept\"/><int id=\"SECOND\" value=\"" + text
        + "\"/><string id=\"THIRD\" value=\"" + filling(number).toUtf8() + "\"/></preferences>\n";
}

int ValueSet::inFile(QString const &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return NoFile;
    QDomDocument document;
    if (!document.setContent(&file))
        return Torn;
    QStringList values{ u"0"_s, u"0"_s, u"0"_s };
    QStringList const keys{ u"FIRST"_s, u"SECOND"_s, u"THIRD"_s };
    QDomElement element = document.documentElement().firstChildElement();
    for (; !element.isNull(); element = element.nextSiblingElement()) {
        auto const index = keys.indexOf(element.attribute(u"id"_s));
        if (index >= 0)
            values[index] = element.attribute(u"value"_s);
    }
    return setOf(values[0], values[1].toInt(), values[2]);
}
