#pragma once
// The usage limits' decisions: what the settings say, how far a limit is used, when a warning is
// due, and how a meter is drawn. Data is in MB of 1048576 bytes, time in seconds where not said
// otherwise.

#include <QDate>
#include <QRect>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QVector>

#include "NetInfoConfigRecords.h"

namespace NetInfoRules {

//! How far a limit is used.
enum LimitState { LimitFine = 0, LimitNear = 1, LimitReached = 2 };

//! What warns before a limit is reached; 0 is off. A remainder switches the percentage off.
struct LimitWarning
{
    int percentage = 0;
    int remainder = 0; //!< MB or seconds
};

//! The warning of the last item of \a name; off without one.
[[nodiscard]] LimitWarning limitWarning(const QVector<NetInfoLimitCfg> &items, const QString &name);

//! Whether \a used of a \a limit in the same unit reaches the percentage; never with a limit of 0.
[[nodiscard]] bool dataPercentageReached(long double used, unsigned int limit,
                                         const LimitWarning &warning);

//! The same without a test of the limit: of a limit of 0 any use is enough, and none is not. The
//! meter gives \a used in seconds and \a limit in hours; this mix is intended.
[[nodiscard]] bool timePercentageReached(long double used, quint64 limit,
                                         const LimitWarning &warning);

//! The state when \a remaining is left; \a percentageReached as above.
[[nodiscard]] LimitState limitState(long double remaining, bool percentageReached,
                                    const LimitWarning &warning);

//! The name of the configured colour of \a state.
[[nodiscard]] QString limitColourName(LimitState state);

//! Bytes as MB, exactly where long double has 64 bits of precision.
[[nodiscard]] long double megabytes(quint64 bytes);

//! \a value without its fraction; what 64 bits cannot hold becomes the nearest number, what is no
//! number 0.
[[nodiscard]] quint64 wholeNumber(long double value);

//! MB as whole bytes, within the same bounds.
[[nodiscard]] quint64 bytesOf(long double megabytes);

//! Hours and minutes as "1:05"; hours are not cut at a day.
[[nodiscard]] QString hoursAndMinutes(quint64 seconds);

//! Whether a period's time fell, as it does when the next one has begun. Compared as unsigned.
[[nodiscard]] bool isNewPeriod(qint64 now, qint64 before);

//! A meter's filled part when \a area is painted. Width and height of \a area are used crosswise;
//! this is intended. Empty when \a maximum is not above 0.
[[nodiscard]] QRectF meterFill(const QRect &area, long double value, long double maximum);

//! Warnings that are switched on or still to be shown, each for data and time.
struct LimitWarnings
{
    bool dataBefore = false;
    bool dataAfter = false;
    bool timeBefore = false;
    bool timeAfter = false;

    [[nodiscard]] bool operator==(const LimitWarnings &other) const;
};

//! What is still to be shown when a new period begins.
[[nodiscard]] LimitWarnings rearmed(LimitWarnings pending, const LimitWarnings &enabled);

//! The usage limits as the main view reads them. Anything but "false" is on; the warning switches
//! alone are on with "true" alone.
struct LimitSettings
{
    bool specificPeriod = false; //!< else the figures since a date are measured
    bool daily = false;
    bool weekly = false; //!< neither: monthly
    bool dataEnabled = false;
    bool timeEnabled = false;
    unsigned int dataLimit = 0; //!< MB
    unsigned int timeLimit = 0; //!< hours
    int weekday = 0; //!< 0 is the first of the list of the page that saved it
    int day = 0; //!< 0 is the first of the month
    QString startDate;
    LimitWarnings enabled;
    LimitWarnings pending;
};

//! What the settings record \a values says; missing ones are empty.
[[nodiscard]] LimitSettings limitSettings(const QStringList &values);

//! The date of three numbers, day, month and year; invalid when \a text is none.
[[nodiscard]] QDate settingsDate(const QString &text);

//! "true" or "false".
[[nodiscard]] QString switchText(bool on);

} // namespace NetInfoRules
