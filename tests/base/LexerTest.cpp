#include "TULex.h"
#include "TestSupport.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace {
class LexerTest : public HostTest {
protected:
    TULex open(QByteArray const &text) const
    {
        TULex lex;
        EXPECT_TRUE(lex.openFile(writeFile(u"legacy.txt"_s, text)));
        return lex;
    }
};
} // namespace

TEST_F(LexerTest, SplitsATextIntoTokens)
{
    struct {
        QByteArray text;
        QString tokens; // joined by "|"
    } const table[] = { { "", {} }, { " \t\r\n ", {} }, { "A B\tC\nD\r\nE\rF ", u"A|B|C|D|E|F"_s },
        { "\xEF\xBB\xBFKEY caf\xC3\xA9", u"KEY|café"_s }, { R"(K "two words" # \n)", u"K|two words|#|\\n"_s },
        { R"(x "" a"b c"d"e)", u"x||a\"b|c\"d\"e"_s }, { R"("a"b "c""d")", u"a|b|c|d"_s },
        { "\"open end\r\nB", u"open end|B"_s }, { R"("\"q\" \\ \n \x \\")", u"\"q\" \\ \n \\x \\"_s },
        { "\"a\\\nb", u"a\\|b"_s }, { R"("a\)", u"a\\"_s } };
    for (auto const &row : table) {
        QStringList tokens;
        for (TULex lex = open(row.text); !lex.eof(); lex.get(false))
            tokens += lex;
        EXPECT_EQ(tokens.join(u'|'), row.tokens) << row.text.constData();
    }
}

TEST_F(LexerTest, SkipsFromTheLineOnWhichTheTokenBegan)
{
    struct {
        QByteArray text;
        int advance;
        QString next; // null: the end
    } const table[] = { { "a b\nc", 0, u"c"_s }, { "a b\nc d", 1, u"c"_s }, { "a\n b c\nd", 1, u"d"_s },
        { "a\r\n\r\n  b", 0, u"b"_s }, { "a\rb", 0, u"b"_s }, { "a \"x\\ny\" z\nb", 1, u"b"_s },
        { "\"open\nb c", 0, u"b"_s }, { "a b", 0, {} }, { "a", 1, {} } };
    for (auto const &row : table) {
        TULex lex = open(row.text);
        for (int i = 0; i < row.advance; ++i)
            lex.get(false);
        lex.skipToNextLine();
        EXPECT_EQ(lex.eof(), row.next.isNull()) << row.text.constData();
        EXPECT_EQ(QString(lex), row.next) << row.text.constData();
    }
}

TEST_F(LexerTest, KeepsATokenThatIsNotOfTheType)
{
    std::optional<bool> const yes = true, no = false;
    struct {
        QByteArray token;
        std::optional<bool> asBool;
        std::optional<int> asInt;
        std::optional<double> asDouble;
    } const table[] = { { "Y", yes, {}, {} }, { "yes", yes, {}, {} }, { "TRUE", yes, {}, {} }, { "n", no, {}, {} },
        { "No", no, {}, {} }, { "false", no, {}, {} }, { "yess", {}, {}, {} }, { "1", {}, 1, 1.0 },
        { "\"-12\"", {}, -12, -12.0 }, { "2147483648", {}, {}, 2147483648.0 }, { "1e3", {}, {}, 1000.0 },
        { "1,5", {}, {}, {} }, { "0x10", {}, {}, {} }, { "\"\"", {}, {}, {} } };
    for (auto const &row : table) {
        auto const check = [&](auto expected, auto read) {
            TULex lex = open(row.token + " next");
            QString const token = lex;
            typename decltype(expected)::value_type value{};
            EXPECT_EQ((lex.*read)(value), expected.has_value()) << row.token.constData();
            EXPECT_EQ(value, expected.value_or(value)) << row.token.constData();
            EXPECT_EQ(QString(lex), expected ? u"next"_s : token) << row.token.constData();
        };
        check(row.asBool, &TULex::get_bool);
        check(row.asInt, &TULex::get_int);
        check(row.asDouble, &TULex::get_double);
    }
}

TEST_F(LexerTest, AFileThatCannotBeReadLeavesNoToken)
{
    for (QString const &file : { path(u"missing"_s), path({}) }) {
        TULex lex = open("KEY");
        EXPECT_FALSE(lex.openFile(file));
        EXPECT_TRUE(lex.eof());
        EXPECT_FALSE(lex.get(false));
    }
}
