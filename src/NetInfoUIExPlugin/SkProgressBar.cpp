#include "SkProgressBar.h"

#include <QPainter>
#include <QPaintEvent>

#include "NetInfoLimitRules.h"

SkProgressBar::SkProgressBar(QWidget *parent)
    : QProgressBar(parent)
    , m_colour(0, 0, 0, 255)
{
}

void SkProgressBar::SetMeter(const QString &text, const QColor &colour, long double value,
                             long double maximum)
{
    m_text = text;
    m_colour = colour;
    m_value = value;
    m_maximum = maximum;
    update();
}

QString SkProgressBar::text() const
{
    return m_text;
}

QColor SkProgressBar::colour() const
{
    return m_colour;
}

long double SkProgressBar::meterValue() const
{
    return m_value;
}

long double SkProgressBar::meterMaximum() const
{
    return m_maximum;
}

void SkProgressBar::paintEvent(QPaintEvent *event)
{
    // The rectangle to be painted takes the whole bar's place.
    const QRect area = event->rect();
    askForWholePaint(area);
    QPainter painter(this);
    painter.fillRect(area, Qt::white);
    painter.fillRect(NetInfoRules::meterFill(area, m_value, m_maximum), QBrush(m_colour));
    painter.setPen(Qt::black); // on white in every palette
    painter.drawText(area, int(Qt::AlignCenter), m_text);
    painter.setPen(
        QPen(QColor(124, 124, 124, 255), 1.0, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRect(area.topLeft(), area.size() - QSize(1, 1)));
}

void SkProgressBar::askForWholePaint(const QRect &painted)
{
    // One for each part: where a window shows a part alone, what is asked for is a part again.
    m_wholePaintAsked = !painted.contains(rect()) && !m_wholePaintAsked;
    if (m_wholePaintAsked)
        update();
}
