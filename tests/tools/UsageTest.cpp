#include "ProgramTest.h"

using namespace Qt::StringLiterals;

namespace {
class UsageTest : public ProgramTest {
protected:
    QString program = QStringLiteral(PREFS_PROGRAM);

    QByteArray generated(QString const &format) { return output(program, { u"--generate"_s, format }); }
};

// What stands in front of the word to complete, the word, and what is offered, all separated by "|".
struct Completion {
    char const *words;
    QByteArray offered;
};
} // namespace

TEST_F(UsageTest, HelpIsThatOfTheProgramOrOfAVerb)
{
    QByteArray const help = output(program, { u"--help"_s });
    EXPECT_TRUE(
        help.startsWith("Usage: prefs ") && help.contains("\n  explain KEY") && help.contains("\n  --user FILE "));
    QByteArray const ofList = output(program, { u"list"_s, u"--help"_s });
    EXPECT_TRUE(ofList.startsWith("Usage: prefs [OPTION...] list") && ofList.contains("--changed"));
    EXPECT_FALSE(ofList.contains("--dry-run")) << "an option of another verb";
    expect({
        { "--generate|html", 2, "", "man bash zsh" },
        { "frobnicate|--help", 2, "", "no verb" },
        { "list|--version", 0, "prefs " PREFS_VERSION "\n" },
    });
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
    userFile("<int id='UNKNOWN' value='7'/><string id='`touch ran`' value=''/><font id='FONT' value='my font'/>");
    writeFile(u"other dir/user-pref.xml"_s, "<preferences><int id='OF OTHER' value='1'/></preferences>");
    define(category("<int id='OF_PANOVIA'/>"), u"pv_prefs.xml"_s);
    QString const script = writeFile(u"prefs.bash"_s, generated(u"bash"_s));
    QStringList const fixed{ QStringLiteral(TOOLS_TESTS "/complete.bash"), script, program };
    Completion const completions[] = {
        { "", "list|get|describe|set|reset|diff|dump|load|check|explain|cached|scenes" },
        { "--fl", "--flavour" },
        { "get|--c", "" }, // an option of other verbs
        { "list|--|--c", "" },
        { "--mode|=|p", "paint" },
        { "--mode=p", "--mode=paint" },
        { "list|--category|'Dr", "Drawing Mode" },
        { "list|--category|Drawing\\ M", "Drawing\\ Mode" },
        { "--user|", "(default)" },
        { "check|--ignore|not-x", "not-xml" },
        { "%|explain|BOOL|U", "UNKNOWN" },
        { "%|get|`", "\\`touch\\ ran\\`" }, // offered, not run
        { "%|get|BOOL|", "" },
        { "%|set|--|BO", "BOOL" },
        { "%|set|FONT|my", "my\\ font" },
        { "%|--flavour|=|panovia|get|OF", "OF_PANOVIA" },
        { "%|--user|'$/other dir/user.pref'|get|OF", "OF\\ OTHER" },
        { "--install|$/missing|get|", "" },
    };
    for (Completion const &completion : completions) {
        SCOPED_TRACE(completion.words);
        QString words = QString::fromUtf8(completion.words);
        words.replace(u'%', commonArguments.join(u'|')).replace(u'$', path(QString()));
        QByteArray const offered = output(u"bash"_s, fixed + words.split(u'|')).trimmed().replace('\n', '|');
        EXPECT_EQ(offered.toStdString(), completion.offered.toStdString());
    }
}

TEST_F(UsageTest, ZshCompletes)
{
    writeFile(u"functions/_prefs"_s, generated(u"zsh"_s));
    userFile("<int id='UNKNOWN' value='7'/><font id='FONT' value='my font'/>");
    Completion const completions[] = {
        { "list --c", "--changed|--category" },
        { "--mode=p", "paint" },
        { "list --category \"Dr", "Drawing Mode" },
        { "% explain BOOL U", "UNKNOWN" },
        { "% set FONT my", "my font" },
        { "% --flavour=panovia get IN", "" },
    };
    QStringList arguments{ QStringLiteral(TOOLS_TESTS "/complete.zsh"), path(u"functions"_s), path(u"pipe"_s) };
    QByteArray offered;
    for (Completion const &completion : completions) {
        QString line = QString::fromUtf8(completion.words);
        line.replace(u'%', commonArguments.join(u' ')).replace(u'$', path(QString()));
        arguments.append(program + u' ' + line);
        offered += completion.offered + '\n';
    }
    EXPECT_EQ(output(u"zsh"_s, QStringList{ u"-f"_s } + arguments).toStdString(), offered.toStdString());
}
