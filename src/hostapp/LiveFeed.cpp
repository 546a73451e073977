#include "LiveFeed.h"

#include <QMetaObject>

#include <array>
#include <atomic>
#include <cstring>

// Read by the SDK's thread. Unregistering waits for a running callback, so what it reads is alive.
static std::atomic<LiveFeed *> theFeed { nullptr };

template <typename Number>
static Number field(const std::array<char, VELQ_STATISTICS_REPORT_SIZE> &report, size_t offset)
{
    Number number = 0;
    std::memcpy(&number, report.data() + offset, sizeof number); // the fields are not aligned
    return number;
}

static LiveSample readSample(bool connected, _VELQ_EN_CONNECT_TYPE type)
{
    LiveSample sample;
    sample.connected = connected;
    sample.interfaceName = LiveFeed::interfaceName();
    std::array<char, VELQ_STATISTICS_REPORT_SIZE> report {};
    if (connected && VELQ_Statistics_GetReport(0, report.data(), type) == 0) {
        sample.download = field<quint64>(report, 524);
        sample.upload = field<quint64>(report, 532);
        sample.downloadSpeed = field<quint32>(report, 540);
        sample.uploadSpeed = field<quint32>(report, 544);
        sample.seconds = field<qint64>(report, 556);
    }
    VELQ_Counters counters;
    if (VELQ_DevSrv_GetCounters(&counters) == 0)
        sample.counters = counters;
    return sample;
}

bool LiveSample::agrees() const
{
    return counters && upload == counters->lastUpload - counters->firstUpload
        && download == counters->lastDownload - counters->firstDownload;
}

LiveFeed::LiveFeed(QObject *parent)
    : QObject(parent)
{
}

LiveFeed::~LiveFeed()
{
    if (m_started)
        VELQ_Statistics_UnRegisterStatisticsCallbackEvent(&LiveFeed::onEvent);
    theFeed = nullptr;
}

bool LiveFeed::start()
{
    theFeed = this;
    m_started = VELQ_Statistics_RegisterStatisticsCallbackEvent(&LiveFeed::onEvent) == 0;
    return m_started;
}

int LiveFeed::onEvent(int event, void *data)
{
    LiveFeed *feed = theFeed;
    if (event != VELQ_EVENT_STATISTICS || !data || !feed)
        return 0;
    int type = 0;
    std::memcpy(&type, static_cast<const char *>(data) + 4, sizeof type);
    const bool connected = *static_cast<const char *>(data) != 0;
    const LiveSample sample = readSample(connected, _VELQ_EN_CONNECT_TYPE(type));
    QMetaObject::invokeMethod(
        feed, [feed, sample] { emit feed->sampled(sample); }, Qt::QueuedConnection);
    return 0;
}

QString LiveFeed::interfaceName()
{
    std::array<char, 64> name {};
    return VELQ_DevSrv_GetInterface(name.data(), int(name.size())) == 0
        ? QString::fromUtf8(name.data())
        : QString();
}

QString LiveFeed::storeProblem()
{
    std::array<char, 512> text {};
    return VELQ_StoreSrv_GetProblem(text.data(), int(text.size())) == 0
        ? QString::fromUtf8(text.data())
        : QString();
}
