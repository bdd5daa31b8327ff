#include "FaultyFiles.h"
#include "StoreTest.h"

#include "PR_IntItem.h"
#include "PR_KeyItem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <csignal>
#include <limits>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
class UserFileTest : public StoreTest {
protected:
    UserFileTest()
    {
        define(category(
            "<bool id='ABC'/><int id='K' value='1'/><bool id='ZED'/><int id='LOCK' value='1' facilityOverride='true'/>"
            "<color id='COLOR'/><double id='DOUBLE'/><font id='FONT' value='arial'/><shortcut id='KEY'/>"
            "<string id='TEXT'/>"));
    }

    static QByteArray file(QByteArray const &elements) { return "<preferences>" + elements + "</preferences>"; }

    QStringList userFiles() const
    {
        return QDir(path(u""_s)).entryList({ u"user*"_s }, QDir::AllEntries | QDir::System | QDir::Hidden, QDir::Name);
    }

    static mode_t modeOf(QString const &path)
    {
        struct stat info = {};
        EXPECT_EQ(stat(QFile::encodeName(path).constData(), &info), 0);
        return info.st_mode & 0777U;
    }

    QByteArray const good = file("<int id='K' value='4'/>");
    QByteArray const older = file("<int id='K' value='5'/>");
    QString const backupName = xmlName + u'~';
};

// Saves while no file of this process can grow beyond a size.
void saveWithin(rlim_t bytes, PR_Preference &store)
{
    rlimit saved = {};
    getrlimit(RLIMIT_FSIZE, &saved);
    rlimit const limit{ bytes, saved.rlim_max };
    auto *const handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    store.save();
    setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, handler);
}
} // namespace

TEST_F(UserFileTest, EachFailureOfALoadIsReportedAndSurvived)
{
    std::string const noXml = "5 Unable to open preference file ($/user-pref.xml)";
    std::string const badXml = "2 Unable to parse prefereces file ($/user-pref.xml)";
    std::string const noText = "5 Preference file not found: $/user.pref";
    std::string const corrupted = "0 Preference file $/user-pref.xml is empty or corrupted.\n";
    std::string const restored = corrupted + "Backup preference file has been restored.";
    std::string const defaults = corrupted + "Default preferences will be loaded instead.";
    std::string const noDefinitions = "5 Unable to open preference file ($/install/resources/prefs.xml)";
    std::string const badDefinitions = "2 Unable to parse prefereces file ($/install/resources/prefs.xml)";
    std::string const fromXml = "int K=4 user", fromBackup = "int K=5 user", fromText = "int K=6 user";
    struct Row {
        char const *files; // definitions, XML, backup, text: good, damaged, empty, a folder or missing
        int error;
        std::string saved;
        Reports reports;
    };
    Row const rows[] = {
        { "g---", 0, "", { noXml, noText } },
        { "g-gg", 0, fromText, { noXml } },
        { "g--f", 0, "", { noXml, noText } },
        { "gggg", 0, fromXml, {} },
        { "gfgg", 2, "", { noXml, "2 Preference file not found: $/user-pref.xml" } },
        { "gegg", 0, fromBackup, { badXml, restored } },
        { "gdg-", 0, fromBackup, { badXml, restored } },
        { "gedg", 0, fromText, { badXml, restored, defaults, badXml } },
        { "gde-", 0, "", { badXml, restored, defaults, badXml, noText } },
        { "gefg", 0, fromText, { badXml, defaults, badXml } },
        { "gd-f", 0, "", { badXml, defaults, badXml, noText } },
        { "-ggg", 1, "", { noDefinitions } },
        { "f--g", 1, "", { noDefinitions } },
        { "ddg-", 1, "", { badDefinitions } },
        { "e---", 1, "", { badDefinitions } },
    };
    QString const files[] = { u"install/resources/prefs.xml"_s, xmlName, backupName, u"user.pref"_s };
    QByteArray const contents[] = { readFile(files[0]), good, older, "K 6" };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.files);
        for (int i = 0; i < 4; ++i) {
            QDir(path(files[i])).removeRecursively();
            QFile::remove(path(files[i]));
            if (row.files[i] == 'f')
                QDir().mkpath(path(files[i]));
            else if (row.files[i] != '-')
                writeFile(files[i], contents[i].left(row.files[i] == 'g' ? 1000 : row.files[i] == 'd' ? 20 : 0));
        }
        QByteArray const before = readFile(xmlName);
        TestStore const store(name);
        EXPECT_EQ(takeReports(), row.reports);
        EXPECT_EQ(store.getErrorCode(), row.error);
        EXPECT_EQ(text(store, true), row.saved);
        if (row.saved == fromBackup) {
            EXPECT_EQ(readFile(xmlName), contents[2]) << "restored on the disk";
            EXPECT_EQ(readFile(xmlName + u".bad"_s), before) << "kept for repair";
            EXPECT_EQ(userFiles().filter(u".new"_s), QStringList());
        }
    }
}

TEST_F(UserFileTest, ErrorMessagesNameTheFile)
{
    auto const message = [](PR_Preference const &store) { return store.getErrorMessage().getText(); };
    QDir().mkpath(path(xmlName));
    EXPECT_EQ(message(TestStore(name)), u"Preference file not found: "_s + name);
    EXPECT_EQ(message(TestStore(name, true)),
        QString(u"Default preference file not found: "_s + path(u"install/resources/prefs.xml"_s) + u' '));
    EXPECT_EQ(takeReports().size(), 3U);
    EXPECT_EQ(PR_Preference::getPrefErrorMessage().getText(), u"Could not initialize preferences."_s);
    TestStore nameless(u""_s);
    EXPECT_EQ(takeReports(), Reports{ "5 TUPreference::load: No preference file specified" });
    tuPref = &nameless;
    EXPECT_EQ(PR_Preference::getPrefErrorMessage().getText(), u""_s);
    tuPref = nullptr;
    nameless.save();
    EXPECT_EQ(nameless.saveStatus().state, PR_Preference::SaveStatus::Failed);
}

TEST_F(UserFileTest, ElementsGoToTheirItemsOrBecomeNewOnes)
{
    std::pair<char const *, char const *> const rows[] = {
        { "<int id='NEW' value='5'/>", "int NEW=5 internal" },
        { "<double id='NEW' value='2.5'/>", "double NEW=2.500000 internal" },
        { "<bool id='NEW' value='Y'/>", "bool NEW=Yes internal" },
        { "<color id='NEW' red='1' green='2' blue='3' alpha='4'/>", "color NEW=(  1   2   3   4) internal" },
        { "<string id='NEW' value='v'/>", "string NEW=v internal" },
        { "<string id='NEW' cdata='true'><![CDATA[two\nlines]]></string>", "string NEW=two\nlines internal" },
        { "<shortcut id='NEW' value='F1'/>", "string NEW=F1 internal" },
        { "<enum id='NEW' value='3'/>", "string NEW=3 internal" },
        { "<int id='NEW' value='5x'/>", "string NEW=5x internal" },
        { "<int id='NEW' value='5'/><bool id='NEW' value='Y'/><int id='NEW' value=''/>", "int NEW=5 internal" },
        { "<bool id='K' value='Y'/>", "" },
        { "<int id='K' value='many'/>", "" },
        { "<string id='K' value='9'/>", "int K=9 user" },
        { "<int id='K' value='1'/>", "int K=1 user" },
        { "<int id='LOCK' value='9'/><bool id='LOCK' value='Y'/>", "" },
        { "<int value='5'/><int id='' value='5'/><string/>", "" },
        { "text<!-- note --><group><int id='K' value='5'/></group><?pi?><int id='K' value='6'/>", "int K=6 user" },
        // Only a section that is the first node counts; blanks are no node, however they are written.
        { "<string id='TEXT' value='v' cdata='true'>&#32;<![CDATA[s]]></string>", "string TEXT=s user" },
        { "<string id='TEXT' value='v' cdata='true'><?pi?><![CDATA[s]]></string>", "string TEXT=v user" },
        { "<string id='TEXT' value='v' cdata='true'><a/><![CDATA[s]]></string>", "string TEXT=v user" },
        { "<string id='TEXT' value='v' cdata='true'><![CDATA[s]]><![CDATA[t]]></string>", "string TEXT=s user" },
    };
    for (auto const &[elements, saved] : rows) {
        writeFile(xmlName, file(elements));
        TestStore const store(name);
        EXPECT_EQ(text(store, true), saved) << elements;
        if (auto const *item = dynamic_cast<PR_IntItem *>(store.find(u"NEW"_s))) {
            EXPECT_EQ(item->minValue(), std::numeric_limits<int>::min());
            EXPECT_EQ(item->maxValue(), std::numeric_limits<int>::max());
        }
    }
    // What the values of the new items would go back to.
    writeFile(xmlName,
        file("<bool id='B' value='Y'/><color id='C' red='1'/><double id='D' value='1'/><int id='I' value='1'/>"));
    TestStore const store(name);
    QStringList defaults;
    for (QString const &key : { u"B"_s, u"C"_s, u"D"_s, u"I"_s })
        defaults.append(store.find(key)->defaultValueAsString());
    EXPECT_EQ(defaults.join(u' '), u"No (255   0   0 255) 0.000000 0"_s);
}

TEST_F(UserFileTest, ADocumentTypeStandsBeforeTheRootAlone)
{
    for (QByteArray const &damaged :
        { file("<!DOCTYPE x><int id='K' value='4'/>"), QByteArray(file("") + "<!DOCTYPE x>") }) {
        writeFile(xmlName, damaged);
        EXPECT_EQ(text(TestStore(name), true), "");
        EXPECT_EQ(takeReports().size(), 4U) << "a damaged file, as a document would have it";
    }
    // However many of the usual entities there are beside one of its own.
    QByteArray const elements =
        "<string id='S' value='&e;'/>" + QByteArray("<string id='N' value='&amp;&#65;'/>").repeated(2000);
    writeFile(xmlName, "<!DOCTYPE x [<!ENTITY e '" + QByteArray(600, 'x') + "'>]>" + file(elements));
    EXPECT_EQ(TestStore(name).getString(u"S"_s).size(), 600);
}

TEST_F(UserFileTest, AProcessThatOnlyLooksWritesNothing)
{
    writeFile(xmlName, "damaged");
    writeFile(backupName, older);
    host.readOnly = true;
    TestStore store(name);
    EXPECT_EQ(takeReports(),
        (Reports{ "2 Unable to parse prefereces file ($/user-pref.xml)",
            "0 Preference file $/user-pref.xml is empty or corrupted.\nIts backup has been read instead." }));
    EXPECT_EQ(text(store, true), "int K=5 user");
    EXPECT_EQ(userFiles(), (QStringList{ xmlName, backupName }));
    EXPECT_EQ(readFile(xmlName), "damaged");

    store.save(); // of its own accord
    EXPECT_EQ(readFile(xmlName + u".bad"_s), "damaged");
    EXPECT_EQ(readFile(backupName), older);

    writeFile(xmlName, "damaged");
    QFile::remove(path(backupName));
    EXPECT_EQ(text(TestStore(name), true), "");
    EXPECT_EQ(takeReports().size(), 4U);
    EXPECT_EQ(readFile(xmlName), "damaged");
}

TEST_F(UserFileTest, AFontStaysTheUsersInAProcessWithoutFonts)
{
    host.fonts = QStringList();
    auto const saved = [this](TestStore &store) {
        store.save();
        return readFile(xmlName).simplified().mid(39);
    };
    QByteArray const times = "<preferences> <font id=\"FONT\" value=\"My Times\"/> </preferences>";
    for (bool const asText : { false, true }) {
        QFile::remove(path(xmlName));
        if (asText)
            writeFile(u"user.pref"_s, "FONT \"My Times\"");
        else
            writeFile(xmlName, file("<font id='FONT' value='My Times'/>"));
        TestStore store(name);
        takeReports();
        EXPECT_EQ(saved(store), times);
        TestStore copy(store);
        EXPECT_EQ(saved(copy), times);
        TestStore other(store);
        other.setIntValue(u"FONT"_s, 0); // in the place of the font
        EXPECT_EQ(saved(other), QByteArray(times).replace("font", "int").replace("My Times", "0"));
        copy.setEnumValue(u"FONT"_s, 2);
        copy.setEnumValue(u"FONT"_s, 0);
        EXPECT_EQ(saved(copy), QByteArray(times).replace("My Times", "0"));
        store.restoreDefault(u"FONT"_s);
        EXPECT_EQ(saved(store), "<preferences/>");
    }
    define(category("<font id='FONT' value=''/>", "Internal"));
    writeFile(xmlName, file("<font id='FONT' value='My Times'/>"));
    TestStore internal(name);
    internal.restoreDefaults(); // leaves it alone
    EXPECT_EQ(saved(internal), times);
    // A lock, and fonts that are there, leave nothing to keep.
    define(category("<font id='FONT' value='' facilityOverride='true'/>"));
    writeFile(xmlName, file("<font id='FONT' value='My Times'/>"));
    TestStore locked(name);
    locked.find(u"FONT"_s)->removeFacilityOverride();
    EXPECT_EQ(saved(locked), "<preferences/>");
}

TEST_F(UserFileTest, LegacyTextIsReadTokenByToken)
{
    QByteArray const shortLines = QByteArray(1000, '#').replace("#", "# K 9\n");
    std::pair<QByteArray, char const *> const rows[] = {
        { "K 5", "int K=5 user" },
        { "NEW v OTHER \"a b\" LAST", "string LAST= internal, string NEW=v internal, string OTHER=a b internal" },
        { "COLOR 1 2 3 4 K 5", "color COLOR=(  1   2   3   4) user, int K=5 user" },
        { "NEW K K 5 TEXT TEXT", "int K=5 user, string NEW=K internal, string TEXT=TEXT user" },
        { "x K 9\nK 5 y\n\"\" K 8\n", "int K=5 user" },
        { "LOCK 5 K 6", "int K=6 user" },
        // A value that is refused may be the key of a later item, else it begins the next pair.
        { "K ZED yes", "bool ZED=Yes user" },
        { "K ABC yes K 6", "int K=6 user" },
        { "K many 6 K 7", "int K=7 user, string many=6 internal" },
        { "K", "" },
        { "\xC3\x89T\xC3\x89 v", "string \xC3\x89T\xC3\x89=v internal" },
        { shortLines + "K 5", "int K=5 user" },
        { shortLines + "# K 9\nK 5", "" },
        { QByteArray(2000, ' ').replace(" ", "TEXT t ") + "K 5", "int K=5 user, string TEXT=t user" },
        { "", "" },
    };
    for (auto const &[content, saved] : rows) {
        writeFile(u"user.pref"_s, content);
        EXPECT_EQ(text(TestStore(name), true), saved) << content.right(60).constData();
        EXPECT_EQ(takeReports().size(), 1U);
    }
}

TEST_F(UserFileTest, ASaveWritesTheUsersValuesInAFixedForm)
{
    TestStore store(name);
    takeReports();
    store.save();
    QByteArray const empty = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<preferences/>\n";
    EXPECT_EQ(readFile(xmlName), empty);
    EXPECT_EQ(modeOf(path(xmlName)), 0600U);
    EXPECT_EQ(store.saveStatus().state, PR_Preference::SaveStatus::Saved);

    store.setBoolValue(u"ABC"_s, true);
    store.setBoolValue(u"ABC"_s, false); // the default, but the user's
    store.setIntValue(u"K"_s, -4);
    store.setRgbaValue(u"COLOR"_s, 0x04010203);
    store.setDoubleValue(u"DOUBLE"_s, 1234567.5);
    store.setEnumValue(u"FONT"_s, 2);
    static_cast<PR_KeyItem *>(store.find(u"KEY"_s))->setValue(int(Qt::CTRL) | int(Qt::Key_S));
    store.setStringValue(u"TEXT"_s, u"two\nlines & <more>"_s);
    store.setStringValue(u"NEW"_s, u"\"quoted\" & <more> \u00E9"_s);
    store.setEnumValue(u"\u00C9"_s, 3);
    store.save();
    EXPECT_EQ(readFile(xmlName).toStdString(), R"(<?xml version="1.0" encoding="UTF-8"?>
<preferences>
 <bool id="ABC" value="N"/>
 <color id="COLOR" alpha="4" blue="3" green="2" red="1"/>
 <double id="DOUBLE" value="1.23457e+06"/>
 <font id="FONT" value="times"/>
 <int id="K" value="-4"/>
 <shortcut id="KEY" value="Ctrl+S"/>
 <string id="NEW" value="&quot;quoted&quot; &amp; &lt;more> é"/>
 <string id="TEXT" cdata="true"><![CDATA[two
lines & <more>]]></string>
 <enum id="É" value="3"/>
</preferences>
)");
    EXPECT_EQ(readFile(backupName), empty);
    EXPECT_EQ(userFiles(), (QStringList{ xmlName, backupName }));
}

TEST_F(UserFileTest, HostileTextsComeBackAndStayStable)
{
    QString const control = QChar(1) + u"\u001F\u000B"_s + QChar(0);
    QString const high(QChar(0xD83D)), low(QChar(0xDE00));
    std::vector<std::pair<QString, QString>> rows{ { u"a"_s + control + u"b"_s, u"ab"_s },
        { u"lone "_s + high + u"high, "_s + low + u"low"_s, u"lone high, low"_s }, { u"end "_s + high, u"end "_s },
        { control, u""_s }, { QChar(0xFFFE) + u"bytes\n"_s + QChar(0xFFFF), u"bytes\n"_s },
        { u"line\n"_s + control, u"line\n"_s }, { u"a]]"_s + control + u">\n"_s, u"a]]>\n"_s } };
    for (QString const &text : { u"]]>\n]]>"_s, u"one\r\ntwo\rthree\n"_s, u"\t blanks \t"_s, u" \n "_s, u"\n"_s,
             u"'\"<>&;&amp;&#10;<![CDATA[x]]>"_s, u"\U0001F600 \uFFFD \u0085 \u2028 \uFEFF"_s,
             QString(QString(300000, u'x') + u'\n' + QString(300000, u'y')) })
        rows.emplace_back(text, text);
    TestStore store(name, false, false);
    for (size_t i = 0; i < rows.size(); ++i) {
        store.setStringValue(u"VALUE "_s + QString::number(i), rows[i].first);
        store.setIntValue(u"KEY "_s + rows[i].first, int(i));
    }
    // Must not take the place of another item once what XML cannot hold is gone.
    store.setIntValue(u"SAME"_s, 1);
    store.setIntValue(u"SAME"_s + control, 2);
    store.setIntValue(control + u"TEXT"_s, 3);
    store.setStringValue(u"TEXT"_s, u"good"_s);
    store.save();
    EXPECT_EQ(store.saveStatus().state, PR_Preference::SaveStatus::Saved);
    EXPECT_EQ(store.saveStatus().reason, u"Left out, as XML cannot hold their keys: TEXT SAME"_s);

    QByteArray saved;
    for (int round = 0; round < 3; ++round) {
        TestStore loaded(name);
        for (size_t i = 0; i < rows.size(); ++i) {
            std::string const trace = rows[i].second.left(40).toStdString();
            EXPECT_TRUE(loaded.getString(u"VALUE "_s + QString::number(i)) == rows[i].second) << trace;
            EXPECT_EQ(loaded.getIntValue(u"KEY "_s + rows[i].second, -1), int(i)) << trace;
        }
        EXPECT_EQ(loaded.getIntValue(u"SAME"_s, -1), 1);
        EXPECT_EQ(loaded.getString(u"TEXT"_s), u"good"_s);
        // The first load may change the order: it takes the keys as they could be written.
        loaded.save();
        EXPECT_TRUE(round == 0 || readFile(xmlName) == saved);
        saved = readFile(xmlName);
    }
}

TEST_F(UserFileTest, LinksAndModesAreRespected)
{
    QString const target = writeFile(u"folder/target"_s, good);
    ASSERT_TRUE(QFile::link(u"folder/target"_s, path(u"link"_s)));
    ASSERT_TRUE(QFile::link(path(u"link"_s), path(xmlName)));
    // Root may save for a user.
    uid_t const owner = geteuid() == 0 ? 4321 : geteuid();
    ASSERT_EQ(chown(QFile::encodeName(target).constData(), owner, getegid()), 0);
    for (mode_t const mode : { 0640U, 0400U, 0666U }) {
        ASSERT_EQ(chmod(QFile::encodeName(target).constData(), mode), 0);
        TestStore(name).save();
        EXPECT_EQ(modeOf(target), mode);
        EXPECT_EQ(QFileInfo(target).ownerId(), owner);
    }
    EXPECT_TRUE(readFile(u"folder/target"_s).startsWith("<?xml"));
    EXPECT_EQ(userFiles(), QStringList{ xmlName });
    QFile::remove(target);
    ASSERT_EQ(chown(QFile::encodeName(path(u"folder"_s)).constData(), owner, getegid()), 0);
    TestStore(name, false, false).save();
    EXPECT_EQ(modeOf(target), 0600U);
    EXPECT_EQ(QFileInfo(target).ownerId(), owner) << "what root makes in a user's folder is the user's";
    EXPECT_TRUE(QFileInfo(path(xmlName)).isSymLink());
}

TEST_F(UserFileTest, AFailedSaveReportsAndLeavesTheFiles)
{
    struct {
        QString store;
        rlim_t room;
        int size;
        std::string report;
    } const rows[] = {
        { name, 20, 1, "2 Error while writing preference file: $/user-pref.xml" },
        { name, 50000, 100000, "2 Error while writing preference file: $/user-pref.xml" },
        // A file in the place of a folder.
        { path(u"user-pref.xml/deep/a.pref"_s), RLIM_INFINITY, 1,
            "2 Unable to open preference file: $/user-pref.xml/deep/a-pref.xml" },
    };
    writeFile(xmlName, good);
    writeFile(backupName, older);
    for (auto const &row : rows) {
        TestStore store(row.store, false, false);
        store.setStringValue(u"TEXT"_s, QString(row.size, u'x'));
        for (int time = 0; time < 2; ++time) {
            SCOPED_TRACE(row.report + std::to_string(row.room));
            testing::internal::CaptureStderr();
            saveWithin(row.room, store);
            EXPECT_EQ(testing::internal::GetCapturedStderr(),
                row.store == name ? ""
                                  : "Unable create preference file: " + store.getPathXml().toStdString() + ". "
                        + store.saveStatus().reason.toStdString() + '\n');
            EXPECT_EQ(takeReports(), Reports{ row.report });
            EXPECT_EQ(store.saveStatus().state, PR_Preference::SaveStatus::Failed);
            EXPECT_FALSE(store.saveStatus().reason.isEmpty());
            EXPECT_EQ(readFile(xmlName), good);
            EXPECT_EQ(readFile(backupName), older);
            EXPECT_EQ(userFiles(), (QStringList{ xmlName, backupName }));
        }
    }
    TestStore store(name);
    saveWithin(20, store);
    EXPECT_EQ(takeReports().size(), 1U);
    store.save();
    EXPECT_EQ(store.saveStatus().state, PR_Preference::SaveStatus::Saved);
    EXPECT_EQ(readFile(backupName), good);
}

TEST_F(UserFileTest, ASaveThatCannotOpenItsNewFileSaysSo)
{
    writeFile(xmlName, good);
    TestStore store(name);
    {
        FaultyFiles const files(2, FaultyFiles::Refused, EMFILE);
        store.save();
    }
    EXPECT_EQ(takeReports(), Reports{ "2 Unable to open preference file: $/user-pref.xml" });
    EXPECT_EQ(store.saveStatus().reason, qt_error_string(EMFILE));
    EXPECT_EQ(userFiles(), QStringList{ xmlName });
}

TEST_F(UserFileTest, ASaveNeverWritesOverAFolderOrASymlinkLoop)
{
    TestStore store(name, false, false);
    for (bool const isLink : { false, true }) {
        ASSERT_TRUE(isLink ? QFile::link(path(xmlName), path(xmlName)) : QDir().mkpath(path(xmlName)));
        store.save();
        EXPECT_EQ(takeReports(), Reports{ "2 Unable to open preference file: $/user-pref.xml" });
        EXPECT_EQ(store.saveStatus().state, PR_Preference::SaveStatus::Failed);
        EXPECT_EQ(userFiles(), QStringList{ xmlName });
        ASSERT_TRUE(isLink || QDir().rmdir(path(xmlName)));
    }
}

TEST_F(UserFileTest, TheBackupIsTheLastGoodFileOfTheUser)
{
    struct {
        char const *name;
        QByteArray atLoad, atSave, backup, damaged;
    } const rows[] = {
        { "damaged at the load", "damaged", "damaged", "", "damaged" },
        { "damaged while running", good, "damaged", older, "damaged" },
        { "changed by another process", older, good, good, "" },
        { "load without definitions", good, good, good, "" },
    };
    for (auto const &row : rows) {
        SCOPED_TRACE(row.name);
        if (&row == std::end(rows) - 1)
            QFile::remove(path(u"install/resources/prefs.xml"_s));
        QFile::remove(path(backupName));
        QFile::remove(path(xmlName + u".bad"_s));
        writeFile(xmlName, row.atLoad);
        TestStore store(name);
        takeReports();
        writeFile(xmlName, row.atSave);
        if (!row.backup.isEmpty())
            writeFile(backupName, older);
        store.save();
        EXPECT_EQ(readFile(backupName), row.backup);
        EXPECT_EQ(readFile(xmlName + u".bad"_s), row.damaged);
        TestStore copy(store);
        for (TestStore *again : { &store, &copy, &copy }) {
            again->save();
            EXPECT_TRUE(store.getErrorCode() == PR_Preference::NoError || readFile(xmlName + u".kept"_s) == row.backup);
        }
    }
}

TEST_F(UserFileTest, ABackupThatCannotBePutBackStays)
{
    writeFile(xmlName, "damaged");
    writeFile(backupName, older);
    auto files = std::make_unique<FaultyFiles>(8, FaultyFiles::Ended); // behind what keeps the damaged file
    TestStore store(name);
    files.reset();
    EXPECT_EQ(takeReports().size(), 4U);
    for (int const value : { 6, 7 }) {
        store.setIntValue(u"K"_s, value);
        store.save();
    }
    EXPECT_TRUE(readFile(xmlName).contains("\"7\""));
    EXPECT_EQ(readFile(backupName), older);
    EXPECT_EQ(readFile(xmlName + u".bad"_s), "damaged");
}

TEST_F(UserFileTest, WhatARunCouldNotReadIsKept)
{
    writeFile(xmlName, good);
    QFile::rename(path(u"install/resources/prefs.xml"_s), path(u"away"_s));
    for (int run = 0; run < 2; ++run) {
        TestStore store(name);
        store.setIntValue(u"OWN"_s, run);
        store.save();
        store.save();
        takeReports();
    }
    EXPECT_EQ(readFile(xmlName + u".kept"_s), good);
    // A damaged file too, be its backup damaged as well.
    QFile::rename(path(u"away"_s), path(u"install/resources/prefs.xml"_s));
    writeFile(xmlName, "damaged");
    writeFile(backupName, "worse");
    TestStore store(name);
    takeReports();
    store.save();
    EXPECT_EQ(readFile(xmlName + u".bad"_s), "damaged");
    EXPECT_EQ(readFile(xmlName + u".kept"_s), good);
}

TEST_F(UserFileTest, ABackupIsMadeAgainAfterALoadThatFailed)
{
    QFile::remove(path(u"install/resources/prefs.xml"_s));
    for (bool const hasFile : { false, true }) {
        for (QString const &left : userFiles())
            QFile::remove(path(left));
        if (hasFile)
            writeFile(xmlName, older);
        TestStore store(name);
        takeReports();
        store.save();
        if (hasFile)
            writeFile(xmlName, good); // by another program
        QByteArray const before = readFile(xmlName);
        store.save();
        EXPECT_EQ(readFile(backupName), before);
        EXPECT_EQ(readFile(xmlName + u".kept"_s), hasFile ? older : QByteArray());
    }
}

TEST_F(UserFileTest, FileAndBackupThatAreOneArePartedByTheNextSave)
{
    writeFile(xmlName, good);
    ASSERT_EQ(::link(QFile::encodeName(path(xmlName)).constData(), QFile::encodeName(path(backupName)).constData()), 0);
    TestStore store(name);
    store.setIntValue(u"K"_s, 9);
    store.save();
    EXPECT_EQ(readFile(backupName), good);
    EXPECT_TRUE(readFile(xmlName).contains("\"9\""));
    EXPECT_EQ(userFiles(), (QStringList{ xmlName, backupName }));
}

// A pipe nobody writes into, a device without an end, a file of the kernel without one.
TEST_F(UserFileTest, WhatIsNoFileIsNeitherReadNorReplaced)
{
    QString const pipe = path(u"pipe"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (QString const &target : { pipe, u"/dev/zero"_s }) {
        for (QString const &file : { xmlName, backupName }) {
            ASSERT_TRUE(QFile::link(target, path(file)));
            writeFile(file == xmlName ? backupName : xmlName, file == xmlName ? good : "damaged");
            TestStore store(name);
            takeReports();
            store.save();
            bool const isFile = file == xmlName;
            EXPECT_EQ(store.saveStatus().state == PR_Preference::SaveStatus::Failed, isFile);
            EXPECT_EQ(
                takeReports(), isFile ? Reports{ "2 Unable to open preference file: $/user-pref.xml" } : Reports{});
            EXPECT_EQ(QFileInfo(path(xmlName)).isSymLink(), isFile);
            for (QString const &left : userFiles())
                QFile::remove(path(left));
        }
    }
}

TEST_F(UserFileTest, LongNamesHaveRoomForTheNewFile)
{
    for (int length : { 241, 246, 250, 254, 255 }) {
        QString const longName = path(QString(length - 4, u'n'));
        for (int value : { 1, 2 }) {
            TestStore store(longName, false, false);
            store.setIntValue(u"K"_s, value);
            store.save();
            EXPECT_EQ(store.saveStatus().state, PR_Preference::SaveStatus::Saved) << length;
        }
        EXPECT_EQ(QFile::exists(longName + u".xml~"_s), length < 255);
        EXPECT_EQ(TestStore(longName).getInt(u"K"_s), 2);
        takeReports();
    }
    EXPECT_EQ(QDir(path({})).entryList({ u"*.new-*"_s }), QStringList());
}

TEST_F(UserFileTest, UserFilesAreOpenedThroughTheRemappedPath)
{
    define(category("<int id='SET'/>"), u"preferenceSets/norvelle/team.xml"_s);
    QByteArray const stored = file("<string id='PREFERENCE_SET' value='team'/><int id='K' value='4'/>");
    writeFile(xmlName, stored);
    writeFile(u"mapped.xml"_s, file("<int id='K' value='5'/>"));
    QString mappedXml = path(u"mapped.xml"_s);
    host.remapPath = [&](QString const &asked) {
        return asked == path(xmlName) ? mappedXml : asked == name ? u""_s : asked;
    };
    TestStore store(name);
    EXPECT_EQ(store.getInt(u"K"_s), 5);
    EXPECT_NE(store.find(u"SET"_s), nullptr) << "the set is looked up in the file as stored";
    store.setIntValue(u"K"_s, 6);
    store.save();
    EXPECT_EQ(readFile(xmlName), stored);
    EXPECT_TRUE(readFile(u"mapped.xml"_s).contains("\"6\""));
    mappedXml.clear();
    EXPECT_EQ(TestStore(name).getInt(u"K"_s), 1) << "no file to read is no error";
}
