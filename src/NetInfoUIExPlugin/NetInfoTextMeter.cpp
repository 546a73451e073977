#include "NetInfoTextMeter.h"

#include <QFontMetrics>

#include <algorithm>
#include <iterator>

#include "QtCompat.h"

NetInfoTextMeter::NetInfoTextMeter()
{
    forget();
}

void NetInfoTextMeter::forget()
{
    std::fill(std::begin(m_advances), std::end(m_advances), -1);
    m_lastText.clear();
    m_lastWidth = 0;
}

void NetInfoTextMeter::useFont(const QFont &font)
{
    if (font == m_font)
        return;
    m_font = font;
    forget();
}

bool NetInfoTextMeter::surelyFits(const QFont &font, const QString &text, int limit)
{
    useFont(font);
    if (limit < 0)
        return false;
    // The sum lacks only kerning, which moves Latin letters by far less than a tenth of their
    // width.
    const qreal allowed = limit * 0.9;
    qreal sum = 0;
    for (const QChar &character : text) {
        const int code = character.unicode();
        if (code < 0x20 || code >= kKnownCharacters)
            return false;
        qreal &advance = m_advances[code];
        if (advance < 0)
            advance = QtCompat::textWidth(QFontMetricsF(font), QString(character));
        sum += advance;
        if (sum > allowed)
            return false;
    }
    return true;
}

int NetInfoTextMeter::width(const QFont &font, const QString &text)
{
    useFont(font);
    if (text != m_lastText) {
        m_lastText = text;
        m_lastWidth = QtCompat::textWidth(QFontMetrics(font), text);
    }
    return m_lastWidth;
}
