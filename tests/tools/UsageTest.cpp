#include "ProgramTest.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
// A beginning of a command line, and what is offered for its last word, separated by "|".
struct Completion {
    char const *line;
    QByteArray offered;
};

class UsageTest : public ProgramTest {
protected:
    UsageTest()
    {
        userFile("<int id='UNKNOWN' value='7'/><string id='`touch ran`' value=''/><font id='FONT' value='my font'/>");
    }

    QByteArray generated(QString const &format) const { return output(program, { u"--generate"_s, format }); }

    // "%" stands for the options that choose the store, "$" for the temporary folder.
    QString filled(char const *line, QChar separator) const
    {
        return QString::fromUtf8(line).replace(u'%', commonArguments.join(separator)).replace(u'$', path({}));
    }

    QString const program = QStringLiteral(PREFS_PROGRAM);
};
} // namespace

TEST_F(UsageTest, EachVerbHasHelp)
{
    QString const help = QString::fromUtf8(output(program, { u"--help"_s }));
    static QRegularExpression const verbs(u"^  (\\w+)"_s, QRegularExpression::MultilineOption);
    auto match = verbs.globalMatch(help.section(u"\nVerbs:\n"_s, 1).section(u"\n\n"_s, 0, 0));
    EXPECT_TRUE(match.hasNext()) << help;
    while (match.hasNext()) {
        QString const verb = match.next().captured(1);
        QByteArray const begin = "Usage: prefs [OPTION...] " + verb.toUtf8();
        EXPECT_TRUE(output(program, { verb, u"--help"_s }).startsWith(begin)) << verb;
    }
}

TEST_F(UsageTest, ManPageIsClean)
{
    QString const page = writeFile(u"prefs.1"_s, generated(u"man"_s));
    EXPECT_EQ(output(u"mandoc"_s, { u"-T"_s, u"lint"_s, u"-W"_s, u"warning"_s, page }), "");
    QByteArray const shown = output(u"mandoc"_s, { u"-T"_s, u"ascii"_s, page }).simplified();
    EXPECT_TRUE(shown.contains("have \\t, \\n and \\\\ for")) << shown.toStdString();
    EXPECT_TRUE(shown.contains("begins with '-' and")) << shown.toStdString();
}

TEST_F(UsageTest, BashCompletes)
{
    writeFile(u"other dir/user-pref.xml"_s, "<preferences><int id='OF OTHER' value='1'/></preferences>");
    define(category("<int id='OF_PANOVIA'/>"), u"pv_prefs.xml"_s);
    QStringList const fixed{ QStringLiteral(TOOLS_TESTS "/complete.bash"),
        writeFile(u"prefs.bash"_s, generated(u"bash"_s)), program };
    // The words are separated by "|", as readline does it: also at "=", where the shell is told so.
    Completion const completions[] = {
        { "li", "list" },
        { "frobnicate|", "" },
        { "list|--c", "--category|--changed" },
        { "list|--|--c", "" },
        { "--mode|=|p", "paint" },
        { "--mode=p", "--mode=paint" },
        { "list|--category|'Dr", "Drawing Mode" },
        { "list|--category|Drawing\\ M", "Drawing\\ Mode" },
        { "--install|", "(dirnames)" },
        { "check|a.xml|", "(default)" },
        { "%|explain|BOOL|u", "UNKNOWN" },
        { "%|get|`", "\\`touch\\ ran\\`" },
        { "%|set|BOOL|", "true|false" },
        { "%|set|FONT|my", "my\\ font" },
        { "%|--flavour|=|panovia|get|OF", "OF_PANOVIA" },
        { "%|--user|'$/other dir/user.pref'|get|OF", "OF\\ OTHER" },
        { "%|--user=$/other\\ dir/user.pref|get|OF", "OF\\ OTHER" },
        { "--install|$/missing|get|", "" },
    };
    for (Completion const &completion : completions) {
        QStringList const words = filled(completion.line, u'|').split(u'|');
        QByteArray const offered = output(u"bash"_s, fixed + words).trimmed().replace('\n', '|');
        EXPECT_EQ(offered.toStdString(), completion.offered.toStdString()) << completion.line;
    }
}

TEST_F(UsageTest, ZshCompletes)
{
    writeFile(u"functions/_prefs"_s, generated(u"zsh"_s));
    Completion const completions[] = {
        { "li", "list" },
        { "list --c", "--changed|--category" },
        { "--mode=p", "paint" },
        { "list --category \"Dr", "Drawing Mode" },
        { "load $/inst", "install" },
        { "% explain BOOL u", "UNKNOWN" },
        { "% set FONT my", "my font" },
        { "% --flavour=panovia get IN", "" },
    };
    QStringList arguments{ u"-f"_s, QStringLiteral(TOOLS_TESTS "/complete.zsh"), path(u"functions"_s),
        path(u"pipe"_s) };
    QByteArray offered;
    for (Completion const &completion : completions) {
        arguments.append(program + u' ' + filled(completion.line, u' '));
        offered += completion.offered + '\n';
    }
    EXPECT_EQ(output(u"zsh"_s, arguments).toStdString(), offered.toStdString());
}
