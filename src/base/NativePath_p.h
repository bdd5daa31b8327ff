#ifndef NATIVEPATH_P_H
#define NATIVEPATH_P_H

#include <QFile>
#include <QString>

#include <filesystem>

/*! The path for the standard library's file operations. One with a NUL would be cut there and name another file: it
    gives the empty path, at which every operation fails. */
inline std::filesystem::path nativePath(QString const &path)
{
    if (path.contains(QChar::Null))
        return {};
#ifdef Q_OS_WIN
    return path.toStdWString();
#else
    return QFile::encodeName(path).toStdString();
#endif
}

/*! The other way round. */
inline QString pathOf(std::filesystem::path const &path)
{
#ifdef Q_OS_WIN
    return QString::fromStdWString(path.wstring());
#else
    return QFile::decodeName(path.c_str());
#endif
}

#endif
