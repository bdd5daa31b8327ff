#include "TestSupport.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace {
class ExampleProgramsTest : public HostTest {
protected:
    // Runs a program and gives its exit status.
    int run(char const *program, QStringList const &arguments)
    {
        QProcess process;
        process.start(QString::fromUtf8(program), arguments);
        EXPECT_TRUE(process.waitForFinished() && process.exitStatus() == QProcess::NormalExit) << program;
        output = QString::fromUtf8(process.readAllStandardOutput());
        messages = QString::fromUtf8(process.readAllStandardError());
        return process.exitCode();
    }

    QString output, messages;
};
} // namespace

TEST_F(ExampleProgramsTest, HostHearsOfChangesAndSaves)
{
    for (int cells = 3; cells < 5; ++cells) {
        EXPECT_EQ(run(EXAMPLE_HOST, { path(QString()) }), 0);
        EXPECT_EQ(output,
            u"A drawing is followed by a line after %1 cells.\nA drawing is followed by a line after %2 cells.\n"
            "Saved to %3\n"_s.arg(cells)
                .arg(cells + 1)
                .arg(path(u"user-pref.xml"_s)));
        EXPECT_EQ(messages, QString());
    }
    EXPECT_TRUE(readFile(u"user-pref.xml"_s).contains("<int id=\"XSHEET_LINE_HOLD\" value=\"5\"/>"));

    writeFile(u"file"_s, "not a folder");
    EXPECT_EQ(run(EXAMPLE_HOST, { path(u"file"_s) }), 1);
    EXPECT_TRUE(messages.contains(u"Not saved: "_s)) << messages;
}
