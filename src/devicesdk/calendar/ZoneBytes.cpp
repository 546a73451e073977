#include "calendar/ZoneBytes.h"

#include <cctz/zone_info_source.h>
#include <dlfcn.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <utility>

namespace velq {

namespace {

// cctz reads a zone once for each name, for ever. A name made of the bytes is therefore right
// however often a file changes, and needs no table of ours.
const char kPrefix[] = "velq:";

thread_local const std::string *t_bytes = nullptr; // of the zone that this thread is loading

struct Loading
{
    explicit Loading(const std::string &bytes)
    {
        t_bytes = &bytes;
    }
    ~Loading()
    {
        t_bytes = nullptr;
    }
    Loading(const Loading &) = delete;
    Loading &operator=(const Loading &) = delete;
};

std::string nameOf(const std::string &bytes)
{
    return kPrefix + std::to_string(bytes.size()) + ':'
        + std::to_string(std::hash<std::string>()(bytes));
}

class ByteSource : public cctz::ZoneInfoSource
{
public:
    explicit ByteSource(const std::string &bytes)
        : m_bytes(bytes)
    {
    }

    std::size_t Read(void *to, std::size_t size) override
    {
        const std::size_t length = std::min(size, m_bytes.size() - m_at);
        std::memcpy(to, m_bytes.data() + m_at, length);
        m_at += length;
        return length;
    }

    int Skip(std::size_t length) override
    {
        if (length > m_bytes.size() - m_at)
            return -1;
        m_at += length;
        return 0;
    }

private:
    const std::string &m_bytes;
    std::size_t m_at = 0;
};

using Factory = cctz_extension::ZoneInfoSourceFactory;
using Source = std::unique_ptr<cctz::ZoneInfoSource>;

Factory g_previous = nullptr;

Source makeSource(const std::string &name, const std::function<Source(const std::string &)> &other)
{
    return t_bytes ? std::make_unique<ByteSource>(*t_bytes) : g_previous(name, other);
}

//! What cctz keeps for ever would be unreachable once it is unloaded together with this library.
void keepCctzLoaded()
{
    Dl_info info {};
    if (dladdr(reinterpret_cast<const void *>(&cctz::load_time_zone), &info) != 0)
        (void)dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
}

/*! Our factory is cctz's while this library is loaded; what others load goes on as before. */
class Registration
{
public:
    Registration()
    {
        g_previous = std::exchange(cctz_extension::zone_info_source_factory, makeSource);
    }
    ~Registration()
    {
        if (cctz_extension::zone_info_source_factory == makeSource)
            cctz_extension::zone_info_source_factory = g_previous;
    }
    Registration(const Registration &) = delete;
    Registration &operator=(const Registration &) = delete;
};

const Registration g_registration;

} // namespace

bool loadZoneBytes(const std::string &bytes, cctz::time_zone &zone)
{
    static const bool kept = (keepCctzLoaded(), true);
    (void)kept;
    const Loading loading(bytes);
    return cctz::load_time_zone(nameOf(bytes), &zone);
}

} // namespace velq
