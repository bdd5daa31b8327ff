#include "ProgramTest.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
class UsageTest : public ProgramTest {
protected:
    QString program = QStringLiteral(PREFS_PROGRAM);

    QByteArray generated(QString const &format) { return output(program, { u"--generate"_s, format }); }

    // The first words of the rows under a title of the help.
    QStringList names(QString const &help, QString const &title)
    {
        QString const rows = help.section(u'\n' + title + ":\n"_L1, 1).section(u"\n\n"_s, 0, 0);
        static QRegularExpression const begin(u"^  ([^ ,]+)"_s, QRegularExpression::MultilineOption);
        QStringList found;
        for (auto match = begin.globalMatch(rows); match.hasNext();)
            found.append(match.next().captured(1));
        EXPECT_GT(found.size(), 3) << help;
        return found;
    }
};

// What stands in front of the word to complete, the word, and what is offered, all separated by "|".
struct Completion {
    char const *words;
    QByteArray offered;
};
} // namespace

TEST_F(UsageTest, NamesEveryVerbAndOptionEverywhere)
{
    QString const help = QString::fromUtf8(output(program, { u"--help"_s }));
    QString const man = QString::fromUtf8(generated(u"man"_s)).remove(u'\\');
    QString const bash = QString::fromUtf8(generated(u"bash"_s));
    QString const zsh = QString::fromUtf8(generated(u"zsh"_s));
    for (QString const &verb : names(help, u"Verbs"_s)) {
        SCOPED_TRACE(verb.toStdString());
        EXPECT_TRUE(man.contains("\n.TP\nfB"_L1 + verb + "fR"_L1));
        EXPECT_TRUE(bash.section(u"local verbs="_s, 1).section(u'\n', 0, 0).contains(verb));
        EXPECT_TRUE(zsh.contains("        '"_L1 + verb + u':'));
        QString const ofVerb = QString::fromUtf8(output(program, { verb, u"--help"_s }));
        EXPECT_TRUE(ofVerb.startsWith("Usage: prefs [OPTION...] "_L1 + verb));
        EXPECT_TRUE(ofVerb.contains("\n  --user FILE "_L1));
    }
    for (QString const &option : names(help, u"Options of some verbs"_s) + names(help, u"Options"_s)) {
        SCOPED_TRACE(option.toStdString());
        EXPECT_TRUE(man.contains(QRegularExpression(u"\\n\\.TP\\nfB"_s + option + u"(,|fR)"_s)));
        EXPECT_TRUE(bash.contains(QRegularExpression(u"(_options|\\])='[^\n]*"_s + option + u"[ ']"_s)));
        EXPECT_TRUE(zsh.contains(QRegularExpression(option + u"=?\\["_s)));
    }
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
        { "li", "list" },
        { "frobnicate|", "" },
        { "--fl", "--flavour" },
        { "--c", "--category|--changed" },
        { "get|--c", "" },
        { "list|--c", "--category|--changed" },
        { "list|--|--c", "" },
        { "--mode|", "full|paint|scan" },
        { "--mode|=|p", "paint" },
        { "--mode=p", "--mode=paint" },
        { "--mode|full|--flavour|", "norvelle|panovia" },
        { "--generate|b", "bash" },
        { "list|--category|'Dr", "Drawing Mode" },
        { "list|--category|Drawing\\ M", "Drawing\\ Mode" },
        { "--user|", "(default)" },
        { "--install|", "(dirnames)" },
        { "load|", "(default)" },
        { "load|a.json|", "" },
        { "check|a.xml|", "(default)" },
        { "%|explain|BOOL|U", "UNKNOWN" },
        { "check|--ignore|not-x", "not-xml" },
        { "--feature|", "" },
        { "%|get|bo", "BOOL" },
        { "%|get|U", "UNKNOWN" },
        { "%|get|`", "\\`touch\\ ran\\`" },
        { "%|get|BOOL|", "" },
        { "%|set|--|BO", "BOOL" },
        { "%|--changed|--category|General|get|IN", "INT" },
        { "%|set|BOOL|", "true|false" },
        { "%|set|FONT|my", "my\\ font" },
        { "%|set|INT|", "" },
        { "%|--flavour|=|panovia|get|OF", "OF_PANOVIA" },
        { "%|--user|'$/other dir/user.pref'|get|OF", "OF\\ OTHER" },
        { "%|--user=$/other\\ dir/user.pref|get|OF", "OF\\ OTHER" },
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
        { "", "list|get|describe|set|reset|diff|dump|load|check|explain|cached|scenes" },
        { "list --c", "--changed|--category" },
        { "--mode ", "full|paint|scan" },
        { "--mode=p", "paint" },
        { "list --category \"Dr", "Drawing Mode" },
        { "load $/inst", "install" },
        { "% get bo", "BOOL" },
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
