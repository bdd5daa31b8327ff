// A shortcut text, as definitions, users' files and legacy text files hold it.

#include "FuzzStore.h"

#include "PR_KeyItem.h"
#include "TULex.h"

#include <QDomDocument>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {
PR_KeyItem fromElement(QDomElement const &element)
{
    PR_KeyItem item(PR_PrefItem::General, u"K"_s, 0);
    require(item.loadXml(element), "a shortcut element can be read");
    require(item.value().count() <= 1, "a shortcut is one key");
    return item;
}

PR_KeyItem fromToken(QString text)
{
    text.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s).replace(u'\n', u"\\n"_s);
    FuzzStore::write(FuzzStore::UserText, "K \"" + text.toUtf8() + "\" END");
    TULex lex;
    PR_KeyItem item(PR_PrefItem::General, u"K"_s, 0);
    require(lex.openFile(FuzzStore::path(FuzzStore::UserText)) && item.load(lex), "a shortcut token can be read");
    require(lex == u"END"_s, "a shortcut is one token");
    return item;
}

PR_KeyItem savedAndRead(PR_KeyItem item)
{
    QDomDocument document;
    document.appendChild(document.createElement(u"preferences"_s));
    item.saveXml(&document, false);
    return fromElement(document.documentElement().firstChildElement());
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size)
{
    QString const text = QString::fromUtf8(reinterpret_cast<char const *>(data), qsizetype(size));
    // Definitions know neither the keypad nor the old form, but must read any text.
    require(PR_KeyItem(PR_PrefItem::General, u"K"_s, text).value().count() <= 1, "a definition gives one key");

    QDomElement element = QDomDocument().createElement(u"shortcut"_s);
    element.setAttribute(u"id"_s, u"K"_s);
    element.setAttribute(u"value"_s, text);
    PR_KeyItem const first = fromElement(element);
    // A token ends with its line.
    require(text.contains(u'\r') || fromToken(text).value() == first.value(), "element and token give the same");

    PR_KeyItem const second = savedAndRead(first);
    require(!textFromFile(&first) || second.value() == first.value(), "a shortcut comes back", first.valueAsString());
    require(savedAndRead(second).value() == second.value(), "it stays the same from the second time on",
        first.valueAsString());
    return 0;
}
