#pragma once
// Every difference between Qt 4.8, 5.15 and 6 that the plug-in meets, one small piece per purpose.

#include <QColor>
#include <QDateTime>
#include <QFontMetrics>
#include <QImage>
#include <QLineEdit>
#include <QLocale>
#include <qmath.h>
#include <QPixmap>
#include <QSize>
#include <QtGlobal>
#include <QtPlugin>

#if QT_VERSION >= 0x050000
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QScreen>
#else
#include <QApplication>
#include <QDesktopWidget>
#include <QRegExp>
#include <QRegExpValidator>
#endif

namespace QtCompat {

//! Whether a debug line of the default category would go anywhere. Any thread.
[[nodiscard]] inline bool isDebugLogEnabled()
{
#if QT_VERSION >= 0x050000
    return QLoggingCategory::defaultCategory()->isDebugEnabled();
#else
    return true;
#endif
}

//! Advance width of \a text in pixels; Metrics is QFontMetrics or QFontMetricsF.
template <typename Metrics>
[[nodiscard]] auto textWidth(const Metrics &metrics, const QString &text)
{
#if QT_VERSION >= 0x050b00
    return metrics.horizontalAdvance(text);
#else
    return metrics.width(text);
#endif
}

//! Local time of \a seconds since 1970-01-01 UTC.
[[nodiscard]] inline QDateTime dateTimeFromSeconds(quint32 seconds)
{
#if QT_VERSION >= 0x050800
    return QDateTime::fromSecsSinceEpoch(seconds);
#else
    return QDateTime::fromTime_t(seconds);
#endif
}

//! \a image mirrored left to right.
[[nodiscard]] inline QImage mirroredImage(const QImage &image)
{
#if QT_VERSION >= 0x060900
    return image.flipped(Qt::Horizontal);
#else
    return image.mirrored(true, false);
#endif
}

//! The colour \a name, as "#RRGGBB" or in words; invalid when it is none.
[[nodiscard]] inline QColor namedColour(const QString &name)
{
#if QT_VERSION >= 0x060400
    return QColor::fromString(name);
#else
    QColor colour;
    if (QColor::isValidColor(name)) // setNamedColor() would warn
        colour.setNamedColor(name);
    return colour;
#endif
}

//! Lets \a edit accept only what matches all of \a pattern.
inline void setPattern(QLineEdit *edit, const QString &pattern)
{
#if QT_VERSION >= 0x050100
    edit->setValidator(new QRegularExpressionValidator(QRegularExpression(pattern), edit));
#else
    edit->setValidator(new QRegExpValidator(QRegExp(pattern), edit));
#endif
}

//! Height of the primary screen in pixels; 0 without a screen.
[[nodiscard]] inline int primaryScreenHeight()
{
#if QT_VERSION >= 0x050000
    const QScreen *const screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry().height() : 0;
#else
    return QApplication::desktop()->screenGeometry(-1).height();
#endif
}

//! A pixmap of \a size logical pixels with \a ratio device pixels to each; null when it is too
//! large.
[[nodiscard]] inline QPixmap pixmapWithRatio(const QSize &size, qreal ratio)
{
    QPixmap pixmap(qCeil(size.width() * ratio), qCeil(size.height() * ratio));
#if QT_VERSION >= 0x050000
    pixmap.setDevicePixelRatio(ratio);
#endif
    return pixmap;
}

} // namespace QtCompat

// The plug-in export. From Qt 5 on the moc makes qt_plugin_instance() out of the metadata; the
// verification text is exported by hand, for hosts that read it. In Qt 4 one macro makes both.
#if QT_VERSION >= 0x050000
#define NETINFO_PLUGIN_METADATA(iid) Q_PLUGIN_METADATA(IID iid)
#define NETINFO_EXPORT_PLUGIN(name, Class)                                                         \
    extern "C" Q_DECL_EXPORT const char *qt_plugin_query_verification_data();                      \
    extern "C" Q_DECL_EXPORT const char *qt_plugin_query_verification_data()                       \
    {                                                                                              \
        return "pattern=QT_PLUGIN_VERIFICATION_DATA\nversion=4.6.2\ndebug=false\n"                 \
               "buildkey=macosx macx g++-4 full-config";                                           \
    }
#else
#define NETINFO_PLUGIN_METADATA(iid)
#define NETINFO_EXPORT_PLUGIN(name, Class) Q_EXPORT_PLUGIN2(name, Class)
#endif
