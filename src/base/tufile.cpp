#include "tufile.h"

#include "MSG_Text.h"
#include "NativePath_p.h"
#include "PL_Folder_p.h"

#include <QFileInfo>

#include <cerrno>
#include <filesystem>

namespace fs = std::filesystem;

bool tufile::fileExists(QString const &path)
{
    if (path.isEmpty())
        return false;
    std::error_code code;
    fs::file_type const type = fs::status(nativePath(path), code).type();
    return type != fs::file_type::not_found && code != std::errc::filename_too_long;
}

bool tufile::checkCreatePath(QString const &path, MSG_Text &error, bool create)
{
    std::error_code code;
    fs::path const folder = fs::absolute(nativePath(path), code).parent_path(); // "a/.." as it is: a may be a link
    if (fs::is_directory(folder, code))
        return true;
    if (create)
        fs::create_directories(folder, code);
    else if (!code)
        code = std::make_error_code(std::errc::not_a_directory);
    // A folder that another process made meanwhile will do.
    std::error_code ignored;
    if (!code || fs::is_directory(folder, ignored))
        return true;

    QString const reason = QString::fromLocal8Bit(code.message().c_str());
    error = MSG_Text(reason, reason);
    return false;
}

bool tufile::rmIfExists(QString const &path)
{
    // Behind a slash a link would stand for what it points to.
    QString place = path;
    while (place.size() > 1 && place.endsWith(QLatin1Char('/')))
        place.chop(1);
    QFileInfo const info(place);
    PL_Folder const folder(info.path());
    bool const isMissing = errno == ENOENT || errno == ENOTDIR;
    return folder.isOpen() ? folder.remove(info.fileName()) : isMissing && !place.isEmpty();
}
