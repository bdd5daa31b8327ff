#include "FaultyFiles.h"
#include "StoreTest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
// What stands on the disk before the fault; the values are those of K.
struct Start {
    char const *name;
    char const *file; // "-" for none
    char const *backup;
    bool isLink = false;
    bool hasHardLinks = true;
    bool isLoad = false; // the fault meets a load instead of a save
    bool isShared = false;
};

Start const starts[] = {
    { "file with backup", "1", "2" },
    { "file without backup", "1", "-" },
    { "no file", "-", "-" },
    { "link to a file with backup", "1", "2", true },
    { "damaged file with backup", "damaged", "2" },
    { "no hard links", "1", "2", false, false },
    { "damaged file, no hard links", "damaged", "2", false, false },
    { "load of a damaged file", "damaged", "2", false, true, true },
    { "shared", "1", "2", false, true, false, true },
    { "shared, no file", "-", "-", false, true, false, true },
};
} // namespace

class SaveFaultsTest : public StoreTest {
protected:
    static QByteArray content(QByteArray const &value)
    {
        return "<preferences><int id='K' value='" + value + "'/><string id='KEPT' value='kept'/></preferences>";
    }

    // Runs a load and a save of K = 9 with a fault; whether it happened.
    bool tryFault(Start const &start, QString const &folder, int position, FaultyFiles::Kind kind, int error)
    {
        QString const store = path(folder + u"/user.pref"_s);
        QString const link = folder + u"/user-pref.xml"_s;
        QString const file = start.isLink ? folder + u"/real/a.xml"_s : link;
        QDir().mkpath(QFileInfo(path(file)).path());
        if (start.isLink)
            QFile::link(path(file), path(link));
        auto const put = [&](QString const &name, QByteArray const &value) {
            if (value != "-")
                writeFile(name, value == "damaged" ? content("1").chopped(30) : content(value));
        };
        put(file, start.file);
        put(file + u'~', start.backup);
        bool const isDamaged = qstrcmp(start.file, "damaged") == 0;

        bool isSaved = false;
        bool hasHappened = false;
        auto loaded = start.isLoad ? nullptr : std::make_unique<TestStore>(store);
        if (loaded)
            loaded->setShared(start.isShared);
        if (isDamaged && loaded) // by another program, while this one runs
            put(file, start.file);
        {
            FaultyFiles faults(position, kind, error);
            faults.hasLinks = start.hasHardLinks;
            if (loaded) {
                loaded->setIntValue(u"K"_s, 9);
                loaded->save();
                isSaved = loaded->saveStatus().state == PR_Preference::SaveStatus::Saved;
            } else {
                TestStore const damaged(store);
            }
            hasHappened = faults.hasHappened;
        }
        loaded.reset();
        takeReports();

        auto const isWhole = [&](QString const &name) {
            return readFile(name).endsWith("</preferences>\n") || readFile(name).endsWith("</preferences>");
        };
        EXPECT_TRUE(isWhole(file) || isDamaged || (qstrcmp(start.file, "-") == 0 && !QFile::exists(path(file))));
        EXPECT_TRUE(isWhole(file + u'~') || !QFile::exists(path(file + u'~')));
        EXPECT_TRUE(isWhole(file + u'~') || qstrcmp(start.backup, "-") == 0) << "a backup was lost";
        EXPECT_EQ(start.isLink, QFileInfo(path(link)).isSymLink());
        int const old = isDamaged ? 2 : qstrcmp(start.file, "-") == 0 ? 0 : 1;
        TestStore again(store);
        EXPECT_TRUE(again.getInt(u"K"_s) == 9 ? !start.isLoad : !isSaved && again.getInt(u"K"_s) == old)
            << again.getInt(u"K"_s) << (isSaved ? " though saved" : "");
        EXPECT_TRUE(old == 0 || again.getStringValue(u"KEPT"_s, {}) == u"kept");
        again.setIntValue(u"K"_s, 10);
        again.save();
        EXPECT_EQ(again.saveStatus().state, PR_Preference::SaveStatus::Saved);
        EXPECT_EQ(TestStore(store).getInt(u"K"_s), 10);
        EXPECT_EQ(QDir(QFileInfo(path(file)).path()).entryList({ u"*.new-*"_s }), QStringList());
        EXPECT_TRUE(!isDamaged || readFile(file + u".bad"_s) == content("1").chopped(30)) << "not kept for repair";
        takeReports();
        return hasHappened;
    }
};

// Each call of each save and load, refused, cut short, and as the last one of the process.
TEST_F(SaveFaultsTest, LoseNothing)
{
    define(category("<int id='K' value='0'/>"));
    struct {
        FaultyFiles::Kind kind;
        int error;
    } const kinds[] = { { FaultyFiles::Refused, EIO }, { FaultyFiles::Refused, ENOSPC },
        { FaultyFiles::CutShort, ENOSPC }, { FaultyFiles::Ended, EIO } };
    int injected = 0;
    for (Start const &start : starts) {
        for (auto const &[kind, error] : kinds) {
            for (int position = 0;; ++position) {
                SCOPED_TRACE(std::string(start.name) + ": kind " + std::to_string(kind) + " at call "
                    + std::to_string(position));
                QString const folder = u"case%1"_s.arg(injected++);
                bool const hasHappened = tryFault(start, folder, position, kind, error);
                QDir(path(folder)).removeRecursively();
                if (!hasHappened || HasFailure())
                    break;
            }
        }
    }
    std::printf("faults injected: %d\n", injected);
}
