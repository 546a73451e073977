#include "calendar/SystemZone.h"

#include "calendar/ZoneFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <string_view>

namespace velq {

namespace {

std::string linkTarget(const std::string &path)
{
    std::array<char, PATH_MAX> target {};
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    return length > 0 ? std::string(target.data(), static_cast<std::size_t>(length))
                      : std::string();
}

//! "Europe/Berlin" for ".../zoneinfo/Europe/Berlin", else the path itself.
std::string nameOfPath(const std::string &path)
{
    constexpr std::string_view kFolder = "zoneinfo/"; // no static object: see Kept
    const std::size_t at = path.rfind(kFolder);
    const std::string name = at == std::string::npos ? path : path.substr(at + kFolder.size());
    return zonePath(name).empty() ? path : name;
}

//! TZ without the colon that may be before a file's name.
std::string withoutColon(const std::string &variable)
{
    return variable.compare(0, 1, ":") == 0 ? variable.substr(1) : variable;
}

//! The file that \a value, without its colon, names if it names one.
std::string fileOf(const std::string &value)
{
    return value.compare(0, 1, "/") == 0 ? value : zonePath(value);
}

std::optional<TimeZone> read(const std::string &value)
{
    if (value.empty())
        return TimeZone::utc();
    if (value.front() == '/')
        return TimeZone::ofFile(value, nameOfPath(value));
    const auto zone = TimeZone::named(value);
    return zone ? zone : TimeZone::ofRule(value);
}

/*!
 * Never destroyed, because threads of the host may still call while the process exits; what it
 * holds is given back at that time, or when the library is unloaded.
 */
union Kept {
    SystemZone zone;

    Kept()
        : zone()
    {
    }
    ~Kept() { }
};

SystemZone &kept()
{
    static Kept kept;
    return kept.zone;
}

struct Release
{
    ~Release()
    {
        kept().forget();
    }
};

const Release g_release;

} // namespace

SystemZone::SystemZone(const std::string &localFile)
    : m_localFile(localFile)
{
}

SystemZone::State SystemZone::look(const char *variable) const
{
    const std::string value = variable ? withoutColon(variable) : std::string();
    const std::string path = variable ? fileOf(value) : m_localFile;
    struct stat status
    {
    };
    if (path.empty() || stat(path.c_str(), &status) != 0)
        status = {};
    return { variable != nullptr,   value,         path,           linkTarget(path),
             status.st_dev,         status.st_ino, status.st_size, status.st_ctim.tv_sec,
             status.st_ctim.tv_nsec };
}

TimeZone SystemZone::current(const char *variable)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    State state = look(variable); // before reading: what changes meanwhile is seen the next time
    if (m_zone && state == m_state)
        return *m_zone;
    const std::string &link = std::get<3>(state);
    std::optional<TimeZone> zone = variable
        ? read(std::get<1>(state))
        : TimeZone::ofFile(m_localFile, link.empty() ? m_localFile : nameOfPath(link));
    m_zone = zone ? zone : TimeZone::utc();
    m_state = std::move(state);
    return *m_zone;
}

void SystemZone::forget()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    State().swap(m_state); // an assignment might keep memory for the next text
    m_zone.reset();
}

TimeZone TimeZone::system()
{
    return kept().current(std::getenv("TZ"));
}

} // namespace velq
