#include "accounting/LiveConnection.h"

#include "accounting/Speed.h"

namespace velq {

namespace {

constexpr std::int64_t kNsPerMs = 1000000;

} // namespace

void LiveConnection::disconnect()
{
    LiveFigures empty;
    empty.type = m_live.type;
    empty.interface = m_live.interface;
    empty.device = m_live.device;
    m_live = empty;
}

void LiveConnection::advance(const LiveLook *look, std::int64_t nowNs)
{
    const bool same = look && look->link.index == m_index && look->link.instance == m_instance;
    if (!look || !look->link.up || !same || look->restarted)
        disconnect();
    m_index = look ? look->link.index : 0;
    m_instance = look ? look->link.instance : 0;
    const std::int64_t elapsedNs = same ? nowNs - m_lastNs : 0;
    m_lastNs = nowNs;
    if (!look) {
        m_live.interface.clear();
        m_live.device.clear();
        return;
    }
    m_live.interface = look->link.name;
    m_live.device = look->device;
    m_live.type = look->link.wireless ? 1 : 0;
    m_live.roaming = look->roaming;
    if (!look->link.up)
        return;
    if (!m_live.connected) {
        // A link that was seen down has counted since then; that is part of this connection.
        m_live.connected = true;
        m_live.firstDownload = look->counters.download - look->delta.download;
        m_live.firstUpload = look->counters.upload - look->delta.upload;
        m_sinceNs = nowNs;
    }
    m_live.lastDownload = look->counters.download;
    m_live.lastUpload = look->counters.upload;
    m_live.downloadSpeed = speed(look->delta.download, elapsedNs);
    m_live.uploadSpeed = speed(look->delta.upload, elapsedNs);
    m_live.timeMs = (nowNs - m_sinceNs) / kNsPerMs;
}

void LiveConnection::restart(int type)
{
    if (!m_live.connected || m_live.type != type)
        return;
    m_live.firstDownload = m_live.lastDownload;
    m_live.firstUpload = m_live.lastUpload;
    m_live.timeMs = 0;
    m_sinceNs = m_lastNs;
}

} // namespace velq
