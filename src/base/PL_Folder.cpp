#include "PL_Folder_p.h"

#include <QFile>

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <vector>

namespace {
int openFolder(int parent, char const *name, int flags = 0)
{
    return openat(parent, name, O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC | flags);
}

// What tells one folder from another.
struct Identity {
    explicit Identity(int file)
    {
        struct stat status = {};
        isKnown = fstat(file, &status) == 0;
        device = status.st_dev;
        inode = status.st_ino;
    }
    bool operator==(Identity const &other) const
    {
        return isKnown && other.isKnown && device == other.device && inode == other.inode;
    }

    bool isKnown;
    dev_t device;
    ino_t inode;
};

// Removes all that is no folder; gives the name of the first folder, or an empty one. False when something stays.
bool removeFiles(int folder, QByteArray &subfolder)
{
    subfolder.clear();
    int const copy = openFolder(folder, ".");
    std::unique_ptr<DIR, int (*)(DIR *)> const entries(copy < 0 ? nullptr : fdopendir(copy), closedir);
    if (!entries)
        return false;
    while (dirent const *const entry = readdir(entries.get())) {
        QByteArray const name(entry->d_name);
        if (name == "." || name == ".." || unlinkat(folder, entry->d_name, 0) == 0 || errno == ENOENT)
            continue;
        // Other systems than Linux say EPERM of a folder, as of much else.
        struct stat status = {};
        if (fstatat(folder, entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISDIR(status.st_mode))
            return false;
        subfolder = name;
        return true;
    }
    return true;
}

// Empties a folder of its own file system and closes it; at any time two folders are open, however deep it is.
bool emptyFolder(int folder)
{
    struct Level {
        QByteArray name; // in the folder above
        Identity above;
    };
    std::vector<Level> levels;
    dev_t const device = Identity(folder).device;
    QByteArray subfolder;
    bool isGood = true;
    while (isGood && removeFiles(folder, subfolder)) {
        if (!subfolder.isEmpty()) {
            int const next = openFolder(folder, subfolder.constData(), O_NOFOLLOW);
            isGood = next >= 0 && Identity(next).device == device;
            levels.push_back({ subfolder, Identity(folder) });
            close(folder);
            folder = next;
            continue;
        }
        if (levels.empty()) {
            close(folder);
            return true;
        }
        int const above = openFolder(folder, "..");
        close(folder);
        folder = above;
        // Somebody may have moved it meanwhile.
        isGood = above >= 0 && Identity(above) == levels.back().above
            && unlinkat(above, levels.back().name.constData(), AT_REMOVEDIR) == 0;
        levels.pop_back();
    }
    if (folder >= 0)
        close(folder);
    return false;
}
} // namespace

PL_Folder::PL_Folder(QString const &path)
    : m_file(path.contains(QChar::Null) ? -1 : openFolder(AT_FDCWD, QFile::encodeName(path).constData()))
{
}

PL_Folder::PL_Folder(PL_Folder const &parent, QString const &name)
    : m_file(openFolder(parent.m_file, QFile::encodeName(name).constData(), O_NOFOLLOW))
{
}

PL_Folder::~PL_Folder()
{
    if (isOpen())
        close(m_file);
}

bool PL_Folder::isSame(PL_Folder const &other) const
{
    return Identity(m_file) == Identity(other.m_file);
}

bool PL_Folder::isOrLiesBelow(PL_Folder const &other) const
{
    Identity const wanted(other.m_file);
    Identity place(m_file);
    int file = openFolder(m_file, ".");
    bool isFound = place == wanted;
    while (file >= 0 && !isFound) {
        int const above = openFolder(file, "..");
        close(file);
        file = above;
        Identity const next(above);
        isFound = next == wanted;
        if (next == place) // the root of all
            break;
        place = next;
    }
    if (file >= 0)
        close(file);
    return isFound;
}

bool PL_Folder::remove(QString const &name) const
{
    QByteArray const native = QFile::encodeName(name);
    bool const isName = !name.contains(QChar::Null) && !name.contains(QLatin1Char('/')) && !name.isEmpty()
        && native != "." && native != "..";
    if (!isName || !isOpen())
        return false;
    if (unlinkat(m_file, native.constData(), 0) == 0 || errno == ENOENT)
        return true;
    int const folder = openFolder(m_file, native.constData(), O_NOFOLLOW);
    if (folder < 0 || Identity(folder).device != Identity(m_file).device) {
        if (folder >= 0)
            close(folder);
        return false;
    }
    return emptyFolder(folder) && unlinkat(m_file, native.constData(), AT_REMOVEDIR) == 0;
}
