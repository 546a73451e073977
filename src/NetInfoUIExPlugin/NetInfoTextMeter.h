#pragma once
// Text widths, fast where the exact one does not matter.

#include <QFont>
#include <QString>

//! Measures texts in one font at a time and remembers that font's characters. GUI thread only.
class NetInfoTextMeter
{
public:
    NetInfoTextMeter();

    //! Whether \a text is certainly not wider than \a limit pixels. False means "measure it":
    //! shaping a text costs more than formatting it, so the common narrow row should not pay for
    //! it.
    [[nodiscard]] bool surelyFits(const QFont &font, const QString &text, int limit);
    //! The exact advance width of \a text in pixels.
    [[nodiscard]] int width(const QFont &font, const QString &text);

private:
    void useFont(const QFont &font);
    void forget();

    static constexpr int kKnownCharacters = 0x300; // Latin: one glyph each, no shaping

    QFont m_font;
    qreal m_advances[kKnownCharacters]; // pixels; -1: not measured yet
    QString m_lastText; // the last one measured exactly: a long row changes seldom
    int m_lastWidth = 0;
};
