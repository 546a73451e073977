#pragma once
// The meter of a usage limit.

#include <QColor>
#include <QProgressBar>
#include <QString>

//! A bar with a text, filled in one colour. Value and maximum are in one unit, bytes or seconds.
class SkProgressBar : public QProgressBar
{
    Q_OBJECT
public:
    explicit SkProgressBar(QWidget *parent = nullptr);

    //! Shows \a value of \a maximum.
    void SetMeter(const QString &text, const QColor &colour, long double value,
                  long double maximum);
    //! The text on the bar; the base class knows only whole percentages.
    QString text() const override;
    [[nodiscard]] QColor colour() const;
    [[nodiscard]] long double meterValue() const;
    [[nodiscard]] long double meterMaximum() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void askForWholePaint(const QRect &painted);

    QString m_text;
    QColor m_colour;
    long double m_value = 0.0L;
    long double m_maximum = 0.0L;
    bool m_wholePaintAsked = false;
};
