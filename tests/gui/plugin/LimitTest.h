#pragma once
// What the tests of the usage limits share: a configuration with limits and colours, a user folder,
// reports in megabytes and seconds, and the warnings that were shown.

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include "PluginTest.h"
#include "SkProgressBar.h"

//! The recurrence, its kind of report, and the history as one of them.
enum class Period { Daily = 1, History = 2, Weekly = 3, Monthly = 4 };

class LimitTest : public PluginTest
{
    Q_OBJECT
protected:
    // Near from 80 of 100 MB and from 5400 of 7200 s.
    static constexpr double kFineMb = 79.5;
    static constexpr double kNearMb = 80;
    static constexpr double kReachedMb = 100;
    static constexpr qint64 kFineSeconds = 5399;
    static constexpr qint64 kNearSeconds = 5400;
    static constexpr qint64 kReachedSeconds = 7200;

    //! Both limits on, 100 MB and 2 hours, in a monthly period.
    static void setLimits();
    static void setPeriod(Period period);
    //! The module's items that make the numbers above, and three colours.
    [[nodiscard]] static QByteArray limitItems();
    //! Makes and initialises the controller with the configuration \a items, and all switches on
    //! but \a off. Settings are saved in a folder of the test's own.
    CNetInfoUIService *startWith(const QByteArray &items, const QStringList &off = QStringList());
    //! The same with limitItems().
    CNetInfoUIService *startLimits();
    //! What the SDK answers for \a period from now on.
    static void use(Period period, double megabytes, qint64 seconds);
    //! The next report comes.
    static void report();
    //! A report of \a seconds and no data in the monthly period.
    static void passTime(qint64 seconds);
    //! From fine over near to reached in \a period, several reports each: the warnings that came.
    [[nodiscard]] static QStringList approach(Period period);

    [[nodiscard]] static SkProgressBar *dataMeter();
    [[nodiscard]] static SkProgressBar *timeMeter();
    //! The text of the warning on the screen; empty without one.
    [[nodiscard]] static QString warning();
    static void closeWarning();
    //! The values 10 to 13 of the file, as a restart would read them.
    [[nodiscard]] static QStringList savedFlags();
    //! The same of the running program.
    [[nodiscard]] static QStringList flags();

private:
    QScopedPointer<QTemporaryDir> m_userFolder;
};

//! The warnings that open, each with the flags that the file has at that moment.
class WarningWatch : public QObject
{
public:
    WarningWatch();
    ~WarningWatch() override;

    QStringList texts;
    QList<QStringList> savedFlags;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool m_open = false;
};
