#include "Command.h"
#include "Installation.h"
#include "ValueText.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>
#include <QTextStream>

#include <map>

using namespace Qt::StringLiterals;

namespace {
struct Constant {
    QString type; // of the definition
    QString declaration;
    QString place; // "FILE:LINE"
};

// A text as a literal of UTF-16.
QString literal(QString const &text)
{
    QString escaped;
    for (QChar const c : text) {
        if (c == u'"' || c == u'\\')
            escaped += u'\\' + c;
        else if (c.unicode() < 0x20 || c.unicode() == 0x7F)
            escaped += u"\\%1"_s.arg(c.unicode(), 3, 8, QLatin1Char('0'));
        else
            escaped += c;
    }
    return u"u\""_s + escaped + u'"';
}

QString number(double value)
{
    QString const text = QString::number(value, 'g', QLocale::FloatingPointShortest);
    return text.contains(QRegularExpression(u"[.e]"_s)) ? text : text + ".0"_L1;
}

// The type of the key, and what follows its text.
std::pair<QString, QString> typeAndDefault(PR_PrefItem &item)
{
    if (auto const *flag = dynamic_cast<PR_BoolItem const *>(&item))
        return { u"bool"_s, flag->value() ? u"true"_s : u"false"_s };
    if (auto const *whole = dynamic_cast<PR_IntItem const *>(&item)) {
        auto const text = [](int value) { // the least number has no literal of its own
            return value == std::numeric_limits<int>::min() ? u"%1 - 1"_s.arg(value + 1) : QString::number(value);
        };
        return { u"int"_s,
            u"%1, %2, %3"_s.arg(text(whole->value()), text(whole->minValue()), text(whole->maxValue())) };
    }
    if (auto const *real = dynamic_cast<PR_DoubleItem const *>(&item))
        return { u"double"_s, number(real->value()) };
    if (auto const *color = dynamic_cast<PR_RgbaItem const *>(&item))
        return { u"unsigned int"_s, u"0x%1U"_s.arg(color->value(), 8, 16, QLatin1Char('0')) };
    if (auto const *shortcut = dynamic_cast<PR_KeyItem const *>(&item))
        return { u"QKeySequence"_s, literal(shortcut->value().toString(QKeySequence::PortableText)) };
    return { u"QString"_s, {} };
}

// XSHEET_LINE_HOLD as XsheetLineHold; empty for a key that makes no name.
QString constantOf(QString const &key)
{
    static QRegularExpression const form(u"^[A-Za-z0-9_]+$"_s);
    if (!form.match(key).hasMatch())
        return {};
    QString name;
    for (QString const &word : key.split(u'_', Qt::SkipEmptyParts))
        name += word.left(1).toUpper() + word.mid(1).toLower();
    return name.isEmpty() || name.front().isDigit() ? u'K' + name : name;
}

// The texts of a definition as the comment of its constant.
QString commentOf(PR_Element const &definition)
{
    QStringList texts;
    for (QStringView const attribute : { QStringView(u"shortDesc"), QStringView(u"longDesc") }) {
        QString const text = definition.attribute(attribute).toString().simplified().replace("*/"_L1, "* /"_L1);
        if (!text.isEmpty())
            texts.append(text);
    }
    return texts.isEmpty() ? QString() : "/*! "_L1 + texts.join(": "_L1) + " */\n"_L1;
}

std::map<QString, Constant> constantsOf(QStringList const &files)
{
    std::map<QString, Constant> constants; // by name
    std::map<QString, QString> keys; // by name of the constant
    for (QString const &path : files) {
        PR_XmlFile const file = PR_XmlFile::read(path, PR_Loader::MaximumDefinitions);
        if (file.state != PR_XmlFile::Read)
            throw Failure{ ExitStatus::CannotRead, u"%1:%2: %3"_s.arg(path).arg(file.errorLine).arg(file.error) };
        auto const add = [&](PR_Element const &definition) {
            std::unique_ptr<PR_PrefItem> const item = itemOf(definition);
            QString const key = definition.id().toString();
            QString const place = u"%1:%2"_s.arg(path).arg(definition.line);
            auto const failure = [&](QString const &text) {
                return Failure{ ExitStatus::CannotRead, u"%1: %2"_s.arg(ValueText::escaped(place), text) };
            };
            if (!item)
                return;
            QString const name = constantOf(key);
            if (name.isEmpty())
                throw failure(u"\"%1\" makes no name of a constant"_s.arg(ValueText::escaped(key)));
            auto const known = constants.find(name);
            if (known != constants.end()) {
                if (keys[name] != key)
                    throw failure(u"%1 and %2 make the same name, %3"_s.arg(key, keys[name], name));
                if (known->second.type != definition.name)
                    throw failure(u"the type of %1 is %2, that of %3 is %4"_s.arg(
                        key, definition.name.toString(), known->second.place, known->second.type));
                return; // the first one gives the default
            }
            auto [type, value] = typeAndDefault(*item);
            if (value.isEmpty())
                value = literal(definition.attribute(u"value").toString());
            if (definition.name == u"font")
                type = u"PR_FontName"_s;
            keys[name] = key;
            constants[name] = { definition.name.toString(),
                commentOf(definition)
                    + u"inline constexpr PR_Key<%1> %2{ %3, %4 };\n"_s.arg(type, name, literal(key), value),
                place };
        };
        for (PR_Element const &category : PR_Elements(file.tree.root(), u"category")) {
            for (PR_Element const &element : PR_Elements(category))
                add(element);
        }
    }
    return constants;
}
} // namespace

void Verbs::keys(Call const &call)
{
    QString const space = call.options.isSet(u"namespace"_s) ? call.options.value(u"namespace"_s) : u"Keys"_s;
    static QRegularExpression const name(u"^[A-Za-z_][A-Za-z0-9_]*$"_s);
    if (!name.match(space).hasMatch())
        throw Failure{ ExitStatus::WrongUsage, u"\"%1\" is no name of a namespace."_s.arg(ValueText::escaped(space)) };
    auto const constants = constantsOf(call.arguments);
    if (!call.options.isSet(u"header"_s)) {
        for (auto const &[constant, row] : constants)
            call.out << constant << '\t' << row.type << '\t' << ValueText::escaped(row.place) << '\n';
        return;
    }
    QStringList files;
    for (QString const &file : call.arguments)
        files.append(QFileInfo(file).fileName());
    call.out << "// Made by \"prefs keys --header\" from " << files.join(", "_L1) << ": change those instead.\n\n"
             << "#pragma once\n\n#include <PR_Key.h>\n\nnamespace " << space << " {\n";
    for (auto const &[constant, row] : constants)
        call.out << row.declaration;
    call.out << "} // namespace " << space << '\n';
}
