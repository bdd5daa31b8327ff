#include "Command.h"
#include "Installation.h"
#include "ValueText.h"

#include <QCommandLineParser>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {
struct Token {
    enum Kind { Name, Number, Text, Mark };

    Kind kind;
    QString text; // of a literal text its value
    int line;
    int column;
};

// The tokens of a C++ source, without comments and characters: names, numbers, literal texts and single marks.
std::vector<Token> tokensOf(QString const &source, int line = 1)
{
    static QRegularExpression const form(
        uR"x((?<skipped>\s++|//[^\n]*+|/\*.*?(?:\*/|\z)|'(?:[^'\\\n]++|\\.)*+'?))x"
        uR"x(|(?:u8|[uUL])?R"(?<delimiter>[^(\s\\]{0,16})\((?<raw>.*?)(?:\)\k<delimiter>"|\z))x"
        uR"x(|(?:u8|[uUL])?"(?<text>(?:[^"\\\n]++|\\.)*+)"?)x"
        uR"x(|(?<name>[^\W\d]\w*+)|(?<number>\d[\w.']*+)|.)x"_s,
        QRegularExpression::DotMatchesEverythingOption | QRegularExpression::UseUnicodePropertiesOption);
    static QRegularExpression const escape(u"\\\\(.)"_s, QRegularExpression::DotMatchesEverythingOption);
    std::vector<Token> tokens;
    qsizetype lineBegin = 0;
    for (auto match = form.globalMatch(source); match.hasNext();) {
        auto const found = match.next();
        auto const has = [&found](QString const &group) { return found.capturedStart(group) >= 0; };
        int const column = int(found.capturedStart() - lineBegin) + 1;
        auto const kind = has(u"name"_s) ? Token::Name : has(u"number"_s) ? Token::Number : Token::Mark;
        if (has(u"raw"_s))
            tokens.push_back({ Token::Text, found.captured(u"raw"_s), line, column });
        else if (has(u"text"_s))
            tokens.push_back({ Token::Text, found.captured(u"text"_s).replace(escape, u"\\1"_s), line, column });
        else if (!has(u"skipped"_s))
            tokens.push_back({ kind, found.captured(), line, column });
        QStringView const whole = found.capturedView();
        line += int(whole.count(u'\n'));
        if (whole.contains(u'\n'))
            lineBegin = found.capturedStart() + whole.lastIndexOf(u'\n') + 1;
    }
    return tokens;
}

// The types that a function reads or writes, separated by blanks; "*" for any.
QString typesOf(QString const &function)
{
    static QHash<QString, QString> const types{ { u"getBool"_s, u"bool"_s }, { u"getInt"_s, u"int font"_s },
        { u"getEnum"_s, u"int font"_s }, { u"getDouble"_s, u"double"_s }, { u"getRgba"_s, u"color"_s },
        { u"getString"_s, u"string"_s }, { u"getKey"_s, u"shortcut"_s }, { u"getBoolValue"_s, u"bool string"_s },
        { u"getIntValue"_s, u"int double string"_s }, { u"getDoubleValue"_s, u"double int string"_s },
        { u"getEnumValue"_s, u"font string"_s }, { u"getRgbaValue"_s, u"color string"_s },
        { u"getStringValue"_s, u"*"_s }, { u"getFontValue"_s, u"font"_s }, { u"setBoolValue"_s, u"bool"_s },
        { u"setIntValue"_s, u"int"_s }, { u"setDoubleValue"_s, u"double"_s }, { u"setEnumValue"_s, u"font"_s },
        { u"setRgbaValue"_s, u"color"_s }, { u"setStringValue"_s, u"string"_s }, { u"find"_s, u"*"_s },
        { u"restoreDefault"_s, u"*"_s } };
    return types.value(function);
}

class SourceChecker {
public:
    explicit SourceChecker(Call const &call)
        : m_call(call)
        , m_installation(call.options.isSet(u"local"_s), {})
    {
    }

    void checkFile(QString const &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            throw Failure{ ExitStatus::CannotRead,
                u"%1 cannot be read: %2"_s.arg(ValueText::escaped(path), file.errorString()) };
        QString const text = QString::fromUtf8(file.readAll());
        if (!path.endsWith(".md"_L1))
            return checkTokens(path, tokensOf(text));
        // Of a page, the pieces of C++.
        static QRegularExpression const piece(u"^```cpp\\n(.*?)^```"_s,
            QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
        for (auto match = piece.globalMatch(text); match.hasNext();) {
            auto const found = match.next();
            int const line = int(QStringView(text).left(found.capturedStart(1)).count(u'\n')) + 1;
            checkTokens(path, tokensOf(found.captured(1), line));
        }
    }

    void addUnused()
    {
        for (Definitions const *definitions : m_installation.mainFiles()) {
            QStringList keys = definitions->keys();
            keys.sort();
            for (QString const &key : std::as_const(keys)) {
                if (!m_texts.contains(key))
                    add(definitions->placeOf(*definitions->find(key)), 0, 0, u"unused-key"_s, key,
                        u"no source names %1"_s.arg(key));
            }
        }
    }

    qsizetype finish()
    {
        if (m_call.options.isSet(u"json"_s))
            m_call.out << QString::fromUtf8(QJsonDocument(m_rows).toJson());
        return m_count;
    }

private:
    void checkTokens(QString const &path, std::vector<Token> const &tokens)
    {
        for (size_t i = 0; i + 2 < tokens.size(); ++i) {
            if (tokens[i].kind == Token::Text)
                m_texts.insert(tokens[i].text);
            if (tokens[i].kind == Token::Name && tokens[i + 1].text == u'(' && !typesOf(tokens[i].text).isEmpty())
                checkCall(path, tokens, i);
        }
    }

    void checkCall(QString const &path, std::vector<Token> const &tokens, size_t function)
    {
        // The key may stand in a macro or a function that makes a text of it.
        size_t at = function + 2;
        while (at + 1 < tokens.size()
            && (tokens[at].kind == Token::Name
                || (tokens[at].kind == Token::Mark && QString(u":("_s).contains(tokens[at].text))))
            ++at;
        static QRegularExpression const form(u"^[A-Z0-9][A-Z0-9_]*$"_s);
        if (at >= tokens.size() || tokens[at].kind != Token::Text || !form.match(tokens[at].text).hasMatch())
            return;
        Token const &key = tokens[at];
        auto const report = [&](QString const &rule, QString const &text) {
            add(path, key.line, key.column, rule, key.text, text);
        };
        PR_Element const *definition = m_installation.find(key.text).second;
        if (!definition)
            definition = m_installation.facility().find(key.text);
        if (!definition) {
            QString const nearest = m_installation.nearestTo(key.text);
            return report(u"unknown-key"_s,
                u"no definition has %1"_s.arg(key.text)
                    + (nearest.isEmpty() ? QString() : u"; did you mean \"%1\"?"_s.arg(nearest)));
        }
        QString const types = typesOf(tokens[function].text), type = definition->name.toString();
        if (types != u'*' && !types.split(u' ').contains(type))
            return report(u"other-type"_s,
                u"%1 is of the type %2, which %3 does not take"_s.arg(key.text, type, tokens[function].text));
        if (tokens[function].text.startsWith("get"_L1))
            checkDefault(tokens, at, *definition, report);
    }

    // A literal default, right behind the key.
    template <class Report>
    static void checkDefault(
        std::vector<Token> const &tokens, size_t at, PR_Element const &definition, Report const &report)
    {
        size_t next = at + 1;
        while (next < tokens.size() && tokens[next].text != u',' && tokens[next].text != u';')
            ++next;
        bool const isNegative = next + 1 < tokens.size() && tokens[next + 1].text == u'-';
        size_t const value = next + 1 + (isNegative ? 1 : 0);
        if (value + 1 >= tokens.size() || tokens[next].text != u',' || tokens[value + 1].text != u')')
            return;
        QString const text = (isNegative ? u"-"_s : QString()) + QString(tokens[value].text).remove(u'\'');
        QString const wanted = definition.attribute(u"value").toString();
        bool isNumber = false, isWanted = false;
        double const number = text.toDouble(&isNumber), wantedNumber = wanted.toDouble(&isWanted);
        bool const isLiteral = tokens[value].kind == Token::Number || tokens[value].kind == Token::Text
            || text == u"true" || text == u"false";
        if (isLiteral && text != wanted && !(isNumber && isWanted && number == wantedNumber)
            && definition.name != u"color" && definition.name != u"font")
            report(
                u"other-default"_s, u"the default of %1 is %2, not %3"_s.arg(definition.id().toString(), wanted, text));
    }

    void add(QString const &file, int line, int column, QString const &rule, QString const &key, QString const &text)
    {
        ++m_count;
        if (m_call.options.isSet(u"json"_s))
            m_rows.append(QJsonObject{ { u"file"_s, file }, { u"line"_s, line }, { u"column"_s, column },
                { u"severity"_s, u"error"_s }, { u"rule"_s, rule }, { u"key"_s, key }, { u"text"_s, text } });
        else
            m_call.out << ValueText::escaped(file) << (line > 0 ? u":%1:%2"_s.arg(line).arg(column) : QString())
                       << ": error: " << ValueText::escaped(text) << " [" << rule << "]\n";
    }

    Call const &m_call;
    Installation m_installation;
    QSet<QString> m_texts; // all literal texts
    QJsonArray m_rows;
    qsizetype m_count = 0;
};
} // namespace

void Verbs::checkSources(Call const &call)
{
    SourceChecker checker(call);
    for (QString const &path : call.arguments) {
        if (!QFileInfo(path).isDir()) {
            checker.checkFile(path);
            continue;
        }
        QStringList files;
        QDirIterator file(path,
            { u"*.cpp"_s, u"*.cc"_s, u"*.cxx"_s, u"*.h"_s, u"*.hpp"_s, u"*.hxx"_s, u"*.inl"_s, u"*.def"_s, u"*.mm"_s },
            QDir::Files, QDirIterator::Subdirectories);
        while (file.hasNext())
            files.append(file.next());
        files.sort();
        for (QString const &each : files)
            checker.checkFile(each);
    }
    if (call.options.isSet(u"unused"_s))
        checker.addUnused();
    if (qsizetype const count = checker.finish(); count > 0)
        throw Failure{ ExitStatus::CannotRead, u"Errors: %1."_s.arg(count) };
}
