#pragma once
// A queue of messages that a test fills, in the kernel's place.

#include "counters/MessageQueue.h"

#include <linux/if.h>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>

#include <cerrno>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "NetlinkBytes.h"

inline Bytes messageBytes(int type, const void *body = nullptr, std::size_t size = 0)
{
    Bytes bytes(sizeof(nlmsghdr) + size);
    nlmsghdr header {};
    header.nlmsg_len = static_cast<unsigned>(bytes.size());
    header.nlmsg_type = static_cast<unsigned short>(type);
    overwrite(bytes, 0, header);
    if (size > 0)
        std::memcpy(bytes.data() + sizeof header, body, size);
    return bytes;
}

inline Bytes linkBytes(int index, quint64 download, quint64 upload, int type = RTM_NEWLINK,
                       unsigned flags = IFF_UP | IFF_RUNNING | IFF_LOWER_UP)
{
    ifinfomsg info {};
    info.ifi_index = index;
    info.ifi_flags = flags;
    rtnl_link_stats64 counters {};
    counters.rx_bytes = download;
    counters.tx_bytes = upload;
    Bytes bytes = messageBytes(type, &info, sizeof info);
    appendAttribute(bytes, IFLA_STATS64, &counters, sizeof counters);
    return bytes;
}

inline Bytes countersBytes(int index, quint64 download, quint64 upload)
{
    if_stats_msg info {};
    info.ifindex = static_cast<unsigned>(index);
    rtnl_link_stats64 counters {};
    counters.rx_bytes = download;
    counters.tx_bytes = upload;
    Bytes bytes = messageBytes(RTM_NEWSTATS, &info, sizeof info);
    appendAttribute(bytes, IFLA_STATS_LINK_64, &counters, sizeof counters);
    return bytes;
}

inline Bytes routeBytes(int index, int length = 0)
{
    rtmsg info {};
    info.rtm_family = AF_INET;
    info.rtm_dst_len = static_cast<unsigned char>(length);
    info.rtm_table = RT_TABLE_MAIN;
    info.rtm_type = RTN_UNICAST;
    Bytes bytes = messageBytes(RTM_NEWROUTE, &info, sizeof info);
    appendAttribute(bytes, RTA_OIF, &index, sizeof index);
    return bytes;
}

inline Bytes endBytes(int error = 0)
{
    const int value = -error;
    return messageBytes(NLMSG_DONE, &value, sizeof value);
}

//! \a value as the kernel writes it: a negated errno.
inline Bytes errorBytes(int value)
{
    nlmsgerr report {};
    report.error = value;
    return messageBytes(NLMSG_ERROR, &report, sizeof report);
}

inline Bytes joined(const Bytes &one, const Bytes &other)
{
    Bytes bytes = one;
    bytes.insert(bytes.end(), other.begin(), other.end());
    return bytes;
}

//! What the kernel does; shared with the queue, which the tested object owns.
struct Script
{
    static constexpr unsigned kPort = 4242;
    struct Entry
    {
        velq::MessageQueue::Received::Status status;
        Bytes bytes;
    };

    void event(const Bytes &bytes)
    {
        entries.push_back({ Status::Bytes, bytes });
    }
    void lose()
    {
        entries.push_back({ Status::Lost, {} });
    }
    void fail()
    {
        entries.push_back({ Status::Failed, {} });
    }
    //! A part of the answer to the request that has been sent last.
    void answer(Bytes bytes, unsigned flags = NLM_F_MULTI)
    {
        overwrite(bytes, offsetof(nlmsghdr, nlmsg_seq), request.nlmsg_seq);
        overwrite(bytes, offsetof(nlmsghdr, nlmsg_pid), kPort);
        overwrite(bytes, offsetof(nlmsghdr, nlmsg_flags), static_cast<unsigned short>(flags));
        event(bytes);
    }

    using Status = velq::MessageQueue::Received::Status;
    std::deque<Entry> entries;
    std::function<void()> requested; // fills the queue
    nlmsghdr request {};
    std::vector<int> types; // of all requests
    bool sends = true;
    bool repeats = false; // the first entry, for ever
};

class ScriptedKernel : public velq::MessageQueue
{
public:
    explicit ScriptedKernel(std::shared_ptr<Script> script)
        : m_script(std::move(script))
    {
    }
    unsigned port() const override
    {
        return Script::kPort;
    }
    bool send(const nlmsghdr *request) override
    {
        m_script->request = *request;
        m_script->types.push_back(request->nlmsg_type);
        if (m_script->sends && m_script->requested)
            m_script->requested();
        return m_script->sends;
    }
    Received receive(bool) override
    {
        if (m_script->entries.empty())
            return { Script::Status::Empty, nullptr, 0 };
        m_current = m_script->entries.front();
        if (!m_script->repeats)
            m_script->entries.pop_front();
        return { m_current.status, m_current.bytes.data(), m_current.bytes.size() };
    }

private:
    std::shared_ptr<Script> m_script;
    Script::Entry m_current { Script::Status::Empty, {} };
};
