#pragma once

#include "LiveFeed.h"

#include <QString>
#include <QStringList>

//! The lines that a run without a display prints. Values in, text out.
class ConsoleReport
{
public:
    explicit ConsoleReport(bool demo);
    //! The captions of the columns.
    [[nodiscard]] static QString heading();
    //! The line of \a sample, aligned with the heading; remembers it for the summary. Before the
    //! first one and whenever it changes, a line says why nothing is counted.
    [[nodiscard]] QStringList lines(const LiveSample &sample);
    //! What the kernel says about the same span, and whether it is the same.
    [[nodiscard]] QStringList summary() const;
    //! How many samples it has had.
    [[nodiscard]] int count() const;

private:
    [[nodiscard]] QString remark(const LiveSample &sample) const;

    const bool m_demo;
    int m_count = 0;
    QString m_remark;
    std::optional<LiveSample> m_last;
};
