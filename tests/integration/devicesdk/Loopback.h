#pragma once
// Bytes that a process sends to nobody over the loopback.

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

constexpr int kLoopbackBytes = 1000000; //!< a call's bytes, without headers

inline void makeTraffic()
{
    constexpr int kBlock = 1000;
    const int file = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_in target {};
    target.sin_family = AF_INET;
    target.sin_port = htons(9);
    target.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const std::array<char, kBlock> block {};
    for (int sent = 0; sent < kLoopbackBytes; sent += kBlock) {
        // Nobody listens, so an earlier datagram's refusal may come back here; send it again then.
        while (sendto(file, block.data(), block.size(), 0, reinterpret_cast<sockaddr *>(&target),
                      sizeof target)
               < 0) { }
    }
    (void)close(file);
}
