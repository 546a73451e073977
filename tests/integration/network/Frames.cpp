#include "Frames.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <linux/if_ether.h>
#include <linux/if_packet.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QFile>
#include <QList>

#include <array>
#include <cstring>
#include <utility>

namespace {

constexpr int kLongest = 1500;
constexpr unsigned short kExperimental = 0x88b5; // an Ethernet type that nobody answers

std::array<char, kLongest> makeFrame()
{
    std::array<char, kLongest> frame {};
    std::memset(frame.data(), 0xff, ETH_ALEN); // to everybody
    std::memset(frame.data() + ETH_ALEN, 2, ETH_ALEN);
    const unsigned short type = htons(kExperimental);
    std::memcpy(frame.data() + 2 * ETH_ALEN, &type, sizeof type);
    return frame;
}

bool writeSwitch(const QString &path, const char *value)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(value, 1) == 1;
}

} // namespace

KernelCounters kernelCounters(const QByteArray &name)
{
    constexpr int kUploadColumn = 8;
    QFile file(QStringLiteral("/proc/thread-self/net/dev"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray &line : file.readAll().split('\n')) {
        const auto colon = line.indexOf(':');
        if (colon < 0 || line.left(colon).trimmed() != name)
            continue;
        const QList<QByteArray> columns = line.mid(colon + 1).simplified().split(' ');
        return { columns.value(0).toULongLong(), columns.value(kUploadColumn).toULongLong(), true };
    }
    return {};
}

bool silenceNewLinks()
{
    const QString folder = QStringLiteral("/proc/sys/net/ipv6/conf");
    if (!QFile::exists(folder))
        return true;
    return writeSwitch(folder + "/all/disable_ipv6", "1")
        && writeSwitch(folder + "/default/disable_ipv6", "1");
}

bool sendFrames(const QByteArray &link, int count, int size)
{
    const int file = socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0);
    sockaddr_ll address {};
    address.sll_family = AF_PACKET;
    address.sll_ifindex = static_cast<int>(if_nametoindex(link.constData()));
    const auto frame = makeFrame();
    int sent = 0;
    while (sent < count && size <= kLongest
           && sendto(file, frame.data(), std::size_t(size), 0,
                     reinterpret_cast<const sockaddr *>(&address), sizeof address)
               == size)
        ++sent;
    (void)close(file);
    return sent == count;
}

Tap::Tap(const QByteArray &name, bool isEthernet)
    : m_file(open("/dev/net/tun", O_RDWR | O_CLOEXEC))
{
    ifreq request {};
    request.ifr_flags = static_cast<short>((isEthernet ? IFF_TAP : IFF_TUN) | IFF_NO_PI);
    std::strncpy(request.ifr_name, name.constData(), IFNAMSIZ - 1);
    if (m_file >= 0 && ioctl(m_file, TUNSETIFF, &request) != 0)
        close();
}

Tap::~Tap()
{
    (void)stopFlood();
    close();
}

void Tap::close()
{
    if (m_file >= 0)
        (void)::close(std::exchange(m_file, -1));
}

quint64 Tap::write(int size)
{
    static const auto frame = makeFrame();
    const auto written = ::write(m_file, frame.data(), std::size_t(size));
    return written > 0 ? quint64(written) : 0;
}

void Tap::startFlood()
{
    m_stop = false;
    m_taken = 0;
    m_thread = std::thread([this] {
        for (int size = 60; !m_stop; size = size < kLongest ? size + 1 : 60)
            m_taken += write(size);
    });
}

quint64 Tap::stopFlood()
{
    if (!m_thread.joinable())
        return 0;
    m_stop = true;
    m_thread.join();
    return m_taken;
}
