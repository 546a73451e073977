#pragma once
// Netlink messages as bytes: captured ones from files, and ones that a test composes.

#include <QByteArray>
#include <QFile>
#include <QString>

#include <linux/rtnetlink.h>
#include <sys/socket.h>

#include <cstring>
#include <vector>

//! A copy in a heap block of exactly this size, so that the sanitizer sees a byte read too many.
using Bytes = std::vector<char>;

inline Bytes captured(const char *name)
{
    QFile file(QStringLiteral(NETINFO_TEST_DATA "/devicesdk/") + QString::fromLatin1(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray content = file.readAll();
    return Bytes(content.begin(), content.end());
}

inline Bytes firstBytes(const Bytes &bytes, std::size_t size)
{
    return Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
}

template <typename T>
void overwrite(Bytes &bytes, std::size_t offset, T value)
{
    std::memcpy(bytes.data() + offset, &value, sizeof value);
}

//! The offset of the attribute \a type after a body of \a bodySize bytes; 0 without one.
inline std::size_t attributeOffset(const Bytes &bytes, std::size_t bodySize, unsigned short type)
{
    std::size_t offset = sizeof(nlmsghdr) + bodySize;
    while (offset + sizeof(rtattr) <= bytes.size()) {
        rtattr attribute {};
        std::memcpy(&attribute, bytes.data() + offset, sizeof attribute);
        if (attribute.rta_type == type)
            return offset;
        offset += RTA_ALIGN(static_cast<std::size_t>(attribute.rta_len));
    }
    return 0;
}

inline void appendAttribute(Bytes &bytes, unsigned short type, const void *data, std::size_t size)
{
    rtattr attribute {};
    attribute.rta_len = static_cast<unsigned short>(sizeof attribute + size);
    attribute.rta_type = type;
    const auto *header = reinterpret_cast<const char *>(&attribute);
    const auto *payload = static_cast<const char *>(data);
    bytes.insert(bytes.end(), header, header + sizeof attribute);
    bytes.insert(bytes.end(), payload, payload + size);
    bytes.resize(RTA_ALIGN(bytes.size()));
    overwrite(bytes, 0, static_cast<unsigned>(bytes.size())); // nlmsg_len
}
