#include "PL_FileOperations_p.h"
#include "PL_FileSlot_p.h"
#include "PL_FileUtil.h"
#include "PL_Folder_p.h"
#include "TestSupport.h"
#include "MSG_Text.h"
#include "PL_InputFile_p.h"
#include "tufile.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
class FileTest : public HostTest {
protected:
    void link(QString const &name, QString const &target) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        EXPECT_EQ(symlink(QFile::encodeName(target).constData(), QFile::encodeName(path(name)).constData()), 0);
    }
    PL_FileSpec fileAt(QString const &name) const { return PL_FileSpec(UT_String(path(name))); }
    // Relative to the temporary folder, as all names are here.
    QString newFile(QString const &name) const
    {
        return QDir(path(QString())).relativeFilePath(PL_FileUtil::NewFileSpec(fileAt(name)).GetFilePath().ToQString());
    }
    QStringList files(QString const &folder) const
    {
        return QDir(path(folder)).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    }
};
} // namespace

TEST_F(FileTest, AFileIsReplacedAndRestoredWhereItsLinksLead)
{
    struct {
        QString file;
        std::vector<std::pair<QString, QString>> links; // "$" is the folder of the row
        QString target; // the folder that the file lies in once the links are followed
        bool exists;
    } const table[] = {
        { u"F"_s, {}, u"."_s, true },
        { u"F"_s, {}, u"."_s, false },
        { u"F"_s, { { u"F"_s, u"d/F"_s } }, u"d"_s, true },
        { u"F"_s, { { u"F"_s, u"d/F"_s } }, u"d"_s, false },
        { u"F"_s, { { u"F"_s, u"d/G"_s }, { u"d/G"_s, u"$/e/F"_s } }, u"e"_s, true },
        { u"s/F"_s, { { u"s"_s, u"d/e"_s }, { u"d/e/F"_s, u"../F"_s } }, u"d"_s, true },
    };
    for (size_t row = 0; row < std::size(table); ++row) {
        SCOPED_TRACE(row);
        auto const &[name, links, target, exists] = table[row];
        QString const folder = QString::number(row) + u'/';
        QString const file = folder + name;
        QString const real = folder + target + u"/F"_s;
        QDir().mkpath(path(folder + target));
        for (auto [linkName, linkTarget] : links)
            link(folder + linkName, linkTarget.replace(u'$', path(QString::number(row))));
        QByteArray const old = exists ? "old" : "";
        if (exists)
            writeFile(real, old);

        writeFile(newFile(file), "new");
        EXPECT_EQ(files(folder + target).filter(QRegularExpression(u"^F\\.new-[a-z0-9]{6}$"_s)).size(), 1);
        EXPECT_TRUE(PL_FileUtil::BackupFile(fileAt(file)));
        EXPECT_TRUE(PL_FileUtil::BackupFile(fileAt(file))); // backup and file are the same now
        EXPECT_EQ(readFile(real), old);
        EXPECT_TRUE(PL_FileUtil::RenameNewFile(fileAt(file)));
        EXPECT_FALSE(PL_FileUtil::RenameNewFile(fileAt(file)));
        EXPECT_EQ(readFile(file), "new");
        EXPECT_EQ(readFile(real), "new");

        EXPECT_EQ(readFile(real + u'~'), old);
        writeFile(real, "damaged");
        auto const mode = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
        QFile::setPermissions(path(real), mode);
        EXPECT_EQ(PL_FileUtil::RestoreBackupFile(fileAt(file), true), exists);
        EXPECT_EQ(readFile(real), exists ? old : QByteArray("damaged"));
        EXPECT_EQ(readFile(real + u".bad"_s), "damaged");
        EXPECT_EQ(QFile::permissions(path(real)) & ~(QFile::ReadUser | QFile::WriteUser), mode);

        if (exists) {
            writeFile(real, "edited"); // must not reach the backup
            EXPECT_TRUE(PL_FileUtil::RestoreBackupFile(fileAt(file), false));
            EXPECT_EQ(readFile(real), old);
            writeFile(real, ""); // nothing to repair from
            EXPECT_TRUE(PL_FileUtil::RestoreBackupFile(fileAt(file), true));
        }
        EXPECT_EQ(readFile(real + u".bad"_s), "damaged");
        EXPECT_EQ(files(folder + target).filter(u"F"_s).join(u' '), exists ? u"F F.bad F~"_s : u"F F.bad"_s);
        for (auto const &[linkName, linkTarget] : links)
            EXPECT_TRUE(QFileInfo(path(folder + linkName)).isSymLink()) << linkName;
    }
}

TEST_F(FileTest, NewFilesThatNobodyHoldsGoWithTheNextSave)
{
    QStringList const others{ u"F~"_s, u"F.new-abcdefg"_s, u"F.new-abc.ef"_s, u"F.20240101.new"_s, u"xF.new-abcdef"_s };
    for (QString const &name : others + QStringList{ u"F.new-abcdef"_s, u"F.new-012345"_s })
        writeFile(name, "left");
    int const writer = open(QFile::encodeName(path(u"F.new-012345"_s)).constData(), O_RDONLY);
    ASSERT_EQ(flock(writer, LOCK_EX), 0);
    writeFile(newFile(u"F"_s), "new");
    EXPECT_TRUE(PL_FileUtil::RenameNewFile(fileAt(u"F"_s)));
    close(writer);
    QStringList expected = others + QStringList{ u"F"_s, u"F.new-012345"_s };
    expected.sort();
    EXPECT_EQ(files({}).filter(u"F"_s), expected);
}

TEST_F(FileTest, ANewFileThatIsTakenForAStaleOneIsMadeAgain)
{
    struct Thief : PL_FileOperations {
        QByteArray path;
        int open(QByteArray const &name, int flags, mode_t mode) override
        {
            path = name;
            return PL_FileOperations::open(name, flags, mode);
        }
        int lock(int file) override
        {
            if (thefts++ == 0)
                PL_FileOperations::remove(path);
            return PL_FileOperations::lock(file);
        }
        int thefts = 0;
    } thief;
    PL_FileOperations::Replacement const replacement(thief);
    auto const result = PL_FileSlot().replace(path(u"F"_s), "new", [](QString const &) { return false; });
    EXPECT_EQ(result.step, PL_FileSlot::Result::Done) << result.reason;
    EXPECT_EQ(thief.thefts, 2);
    EXPECT_EQ(readFile(u"F"_s), "new");
}

TEST_F(FileTest, WhatCannotBeReadOrReachedIsNotReplaced)
{
    writeFile(u"F"_s, "precious");
    writeFile(u"F~"_s, "good");
    QFile::resize(path(u"F"_s), PL_InputFile::MaximumSize + 1);
    EXPECT_FALSE(PL_FileUtil::RestoreBackupFile(fileAt(u"F"_s), true));
    EXPECT_GT(QFileInfo(path(u"F"_s)).size(), PL_InputFile::MaximumSize);
    link(u"loop"_s, u"loop"_s);
    EXPECT_FALSE(PL_FileUtil::BackupFile(fileAt(u"loop"_s)));
    QDir().mkpath(path(u"real/sub"_s));
    link(u"lnk"_s, u"real/sub"_s);
    MSG_Text error;
    EXPECT_TRUE(tufile::checkCreatePath(path(u"lnk/../new/F"_s), error, true));
    EXPECT_TRUE(QFileInfo(path(u"real/new"_s)).isDir());
}

TEST_F(FileTest, RemovingALinkKeepsWhatItNames)
{
    writeFile(u"target/kept"_s, "x");
    link(u"link"_s, u"target"_s);
    link(u"dangling"_s, u"nowhere"_s);
    writeFile(u"tree/a/file"_s, "x");
    link(u"tree/a/link"_s, path(u"target"_s));
    link(u"loop"_s, u"loop"_s);
    EXPECT_TRUE(tufile::fileExists(path(u"loop"_s))) << "it cannot be known";
    for (QString const &name : { QString(300, u'x'), QString(QString(5000, u'x').replace(u"xx"_s, u"x/"_s)) })
        EXPECT_FALSE(tufile::fileExists(path(name))) << "too long to exist";
    struct {
        QString name;
        bool exists;
    } const table[] = { { u"link"_s, true }, { u"loop"_s, true }, { u"dangling"_s, false }, { u"tree"_s, true },
        { u"missing"_s, false } };
    for (auto const &row : table) {
        EXPECT_EQ(tufile::fileExists(path(row.name)), row.exists) << row.name;
        EXPECT_TRUE(tufile::rmIfExists(path(row.name))) << row.name;
    }
    EXPECT_TRUE(tufile::rmIfExists(path(u"target/kept/below"_s))) << "below a file";
    EXPECT_EQ(files({}).join(u' '), u"target"_s);
    EXPECT_EQ(readFile(u"target/kept"_s), "x");
}

TEST_F(FileTest, RemovingStaysInTheFolderThatWasOpened)
{
    writeFile(u"root/parent/scene/file"_s, "x");
    writeFile(u"outside/scene/kept"_s, "x");
    // So deep that neither a path nor a descriptor for each level would do.
    int level = open(QFile::encodeName(path(u"root/parent/scene"_s)).constData(), O_RDONLY);
    for (int depth = 0; depth < 3000; ++depth) {
        ASSERT_EQ(mkdirat(level, "deep", 0700), 0);
        int const next = openat(level, "deep", O_RDONLY);
        close(level);
        level = next;
    }
    close(level);

    PL_Folder const parent(path(u"root/parent"_s));
    ASSERT_TRUE(QFile::rename(path(u"root/parent"_s), path(u"root/moved"_s)));
    link(u"root/parent"_s, u"../outside"_s);
    for (QString const &name : { u""_s, u"."_s, u".."_s, u"../moved"_s, u"a/b"_s })
        EXPECT_FALSE(parent.remove(name)) << name;
    EXPECT_TRUE(parent.remove(u"scene"_s));
    EXPECT_TRUE(parent.remove(u"scene"_s));
    EXPECT_EQ(files(u"root/moved"_s), QStringList());
    EXPECT_EQ(readFile(u"outside/scene/kept"_s), "x");
    EXPECT_TRUE(parent.isOrLiesBelow(PL_Folder(path(u"root"_s))));
    EXPECT_FALSE(PL_Folder(path(u"root/parent"_s)).isOrLiesBelow(PL_Folder(path(u"root"_s))));
    EXPECT_FALSE(PL_Folder(PL_Folder(path(u"root"_s)), u"parent"_s).isOpen()) << "a link";
}

TEST_F(FileTest, OnlyFilesThatEndCanBeRead)
{
    writeFile(u"file"_s, "x");
    writeFile(u"huge"_s, "");
    ASSERT_TRUE(QFile::resize(path(u"huge"_s), (256LL << 20) + 1));
    QDir().mkpath(path(u"folder"_s));
    ASSERT_EQ(mkfifo(QFile::encodeName(path(u"pipe"_s)).constData(), 0600), 0);
    std::pair<QString, QString> const rows[] = { { u"file"_s, u""_s }, { u"folder"_s, u"is not a regular file"_s },
        { u"pipe"_s, u"is not a regular file"_s }, { u"huge"_s, u"is larger than 256 MB"_s },
        { u"missing"_s, u"No such file or directory"_s } };
    for (auto const &[name, reason] : rows)
        EXPECT_EQ(PL_InputFile::read(path(name)).error, reason) << name;
}
