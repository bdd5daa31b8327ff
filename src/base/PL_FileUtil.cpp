#include "PL_FileUtil.h"

#include "PL_FileSlot_p.h"

#include <QHash>
#include <QMutex>

namespace {
QString pathOf(PL_FileSpec const &spec)
{
    return spec.GetFilePath().ToQString();
}

PL_FileSpec specOf(QString const &path)
{
    return PL_FileSpec(UT_String(path));
}

// The names that NewFileSpec() gave, by the files that they are to replace.
QMutex newFilesMutex;
QHash<QString, QString> newFiles;
} // namespace

PL_FileSpec PL_FileUtil::NewFileSpec(PL_FileSpec const &spec)
{
    QString const target = PL_FileSlot::targetOf(pathOf(spec));
    if (target.isEmpty())
        return spec;
    QMutexLocker const lock(&newFilesMutex);
    QString &path = newFiles[target];
    if (path.isEmpty())
        path = PL_FileSlot::newFileOf(target);
    return specOf(path);
}

PL_FileSpec PL_FileUtil::BackupFileSpec(PL_FileSpec const &spec)
{
    QString const target = PL_FileSlot::targetOf(pathOf(spec));
    return specOf(PL_FileSlot::backupOf(target.isEmpty() ? pathOf(spec) : target));
}

bool PL_FileUtil::BackupFile(PL_FileSpec const &spec)
{
    return PL_FileSlot::backUp(pathOf(spec));
}

bool PL_FileUtil::RenameNewFile(PL_FileSpec const &spec)
{
    QString const target = PL_FileSlot::targetOf(pathOf(spec));
    QMutexLocker const lock(&newFilesMutex);
    return PL_FileSlot::renameNewFile(newFiles.take(target), target);
}

bool PL_FileUtil::RestoreBackupFile(PL_FileSpec const &spec, bool keepDamaged)
{
    return PL_FileSlot::restoreBackup(pathOf(spec), keepDamaged);
}
