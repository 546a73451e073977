#pragma once
// The statistics source: the plug-in's only bridge to the device SDK, and the keeper of the module
// configuration.

#include <QColor>
#include <QObject>
#include <QString>
#include <QVector>

#include <host/TagUnits.h>
#include <host/velq.h>

#include <atomic>

#include "NetInfoConfigRecords.h"
#include "NetInfoLimitRules.h"

class NetInfoConfigParse;

//! Figures of one period.
struct NetInfoData
{
    quint64 ullUpData; //!< bytes sent
    quint64 ullDownData; //!< bytes received
    qint64 llTime; //!< seconds connected
};

//! Selector of the stored statistics.
enum _enNetInfoType : int {
    NET_INFO_DAILY = 0,
    NET_INFO_WEEKLY = 1,
    NET_INFO_MONTHLY = 2,
    NET_INFO_YEARLY = 3
};

//! Lives in the GUI thread; the SDK calls StatisticsEventCallBack on a thread of its own.
class NetInfoUILogic : public QObject
{
    Q_OBJECT
public:
    //! The single instance; made on first use, without Init. Null when there is no memory for it.
    static NetInfoUILogic *Instance();
    //! Deletes the instance; the SDK's callback has ended when this returns.
    static void Destroy();

    NetInfoUILogic();
    ~NetInfoUILogic() override;

    //! Registers the callback and reads the configuration: the result of getConfigData, 13 without
    //! a configuration reader.
    int Init();
    void OnDestroy();
    //! The SDK's callback: 1, or 0 for a statistics event without data or without an instance.
    static int StatisticsEventCallBack(int event, void *data);
    //! Unregisters the callback.
    void UnregSDK();

    //! Reads the stored figures of period \a type. 0; else the SDK's result, and \a out is
    //! untouched.
    int GetStatistics(_enNetInfoType type, NetInfoData &out);
    //! Reads the figures since \a key; a failure leaves \a out untouched.
    void GetHistrorySpecData(int key, NetInfoData &out);
    //! Clears the stored figures of the current connect type. 0 on success, 1 on failure.
    int ResetStatistics();
    //! Writes the last reset in the system's short form. False on success, true on failure.
    bool GetLastResetTime(QString &out);
    void SetCurrerentConnectType(_VELQ_EN_CONNECT_TYPE type);
    _VELQ_EN_CONNECT_TYPE GetConnectType() const;

    //! Reads and merges the configuration. The result of the last file read (NetInfoConfigParse), 1
    //! when the customisation name is not available, 13 without a reader.
    int getConfigData();
    //! The merge rule of one section (NetInfoRules::replaceSection).
    void eraseCommonConfig(QString section, QVector<NetInfoConfig> &configData,
                           QVector<NetInfoConfig> custom);
    //! Whether the switch \a name is on.
    bool IsFunctionEnable(QString name);
    //! Append the unit table of data amounts, of speeds.
    void GetFluxUnitData(QVector<TagUnits> &units);
    void GetSpeedUnitData(QVector<TagUnits> &units);
    //! The warning of limit \a name; off without one.
    NetInfoRules::LimitWarning GetLimitWarning(QString name) const;
    //! The meter colour \a name, the last of its items; invalid without one. White and transparent
    //! without any configuration.
    QColor GetProgressColor(QString name) const;
    //! Appends \a seconds as "01:02:05" to \a text. Always 0. Any thread.
    int convertTimeToString(long long seconds, QString &text);

signals:
    //! Live figures: bytes per second, bytes, duration. Emitted on the SDK's thread.
    void statisticsChanged(ulong ulUpSpeed, ulong ulDownSpeed, qulonglong ullUpData,
                           qulonglong ullDownData, QString stringTime);

private:
    void reportEvent(const void *data);

    NetInfoConfigParse *m_pConfigParse; // released through its own OnDestroy
    QVector<NetInfoConfig> m_customizeConfig;
    QVector<NetInfoConfig> m_configData;
    std::atomic<_VELQ_EN_CONNECT_TYPE> m_connectType; // written on the SDK's thread

    static std::atomic<NetInfoUILogic *> m_pNetInfoInstance; // read on the SDK's thread
};
