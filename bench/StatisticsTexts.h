#pragma once
// The texts of one statistics event without any widget: what formatting alone costs.

#include <QString>
#include <QVector>

#include <host/TagUnits.h>

#include "FakeSdk.h"

class StatisticsTexts
{
public:
    //! Reads the unit tables from the plug-in's configuration.
    StatisticsTexts();
    //! Builds the thirteen texts of an event out of the fake SDK's reports; their total length.
    [[nodiscard]] int format(const FakeSdk &sdk);

private:
    [[nodiscard]] QString labelled(const char *key, const QString &value) const;
    [[nodiscard]] QString flux(const char *key, quint64 bytes) const;
    [[nodiscard]] QString speed(quint64 bytesPerSecond) const;

    QVector<TagUnits> m_flux;
    QVector<TagUnits> m_speed;
};
