#include "engine/ConnectionTracker.h"

#include "counters/CounterDelta.h"

namespace velq {

namespace {

constexpr std::int64_t kNsPerMs = 1000000;

int typeOf(const LinkReading &link)
{
    return link.wireless ? 1 : 0;
}

} // namespace

Booking ConnectionTracker::advance(const ReadResult &reading, std::int64_t nowNs)
{
    if (reading.status == ReadStatus::Failed)
        return {}; // the next reading covers this second as well
    if (reading.status == ReadStatus::Absent) {
        m_last.reset();
        disconnect();
        m_live.interface.clear();
        return {};
    }
    const LinkReading &link = reading.link;
    Booking booking;
    booking.type = typeOf(link);
    const CounterDelta delta = m_last ? counterDelta(*m_last, link) : CounterDelta { true, 0, 0 };
    if (delta.restarted)
        disconnect();
    const bool wasConnected = m_live.connected;
    if (link.up && !wasConnected) {
        // A link that was seen down has counted since then; that is part of this connection.
        begin(delta.restarted ? link : *m_last);
        m_sinceNs = m_bookedFromNs = nowNs;
        m_bookedMs = 0;
    }
    booking.totals = { delta.download, delta.upload, 0 };
    if (link.up && wasConnected) {
        const std::int64_t wholeMs = (nowNs - m_bookedFromNs) / kNsPerMs;
        booking.totals.timeMs = static_cast<std::uint64_t>(wholeMs - m_bookedMs);
        m_bookedMs = wholeMs;
    }
    if (!link.up)
        disconnect();
    const std::int64_t elapsedNs = m_last ? nowNs - m_lastNs : 0;
    m_last = link;
    m_lastNs = nowNs;
    update(link, booking, elapsedNs);
    return booking;
}

Booking ConnectionTracker::leave(const ReadResult &lastLook)
{
    Booking booking;
    if (m_last && lastLook.status == ReadStatus::Found) {
        const CounterDelta delta = counterDelta(*m_last, lastLook.link);
        booking.type = typeOf(lastLook.link);
        booking.totals = { delta.download, delta.upload, 0 };
    }
    m_last.reset();
    disconnect();
    m_live.interface.clear();
    return booking;
}

void ConnectionTracker::restart(int type)
{
    if (!m_live.connected || m_live.type != type)
        return;
    m_live.firstDownload = m_live.lastDownload;
    m_live.firstUpload = m_live.lastUpload;
    m_live.timeMs = 0;
    m_sinceNs = m_lastNs;
}

void ConnectionTracker::disconnect()
{
    const LiveFigures before = m_live;
    m_live = {};
    m_live.type = before.type;
    m_live.interface = before.interface;
}

void ConnectionTracker::begin(const LinkReading &base)
{
    m_live.connected = true;
    m_live.firstDownload = base.download;
    m_live.firstUpload = base.upload;
}

void ConnectionTracker::update(const LinkReading &link, const Booking &booking,
                               std::int64_t elapsedNs)
{
    m_live.type = typeOf(link);
    m_live.interface = link.name;
    if (!m_live.connected)
        return;
    m_live.lastDownload = link.download;
    m_live.lastUpload = link.upload;
    m_live.downloadSpeed = speed(booking.totals.download, elapsedNs);
    m_live.uploadSpeed = speed(booking.totals.upload, elapsedNs);
    m_live.timeMs = (m_lastNs - m_sinceNs) / kNsPerMs;
}

} // namespace velq
