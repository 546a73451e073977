#include "NetInfoGraphWidget.h"

#include <host/Change.h>
#include <host/CommonUtils.h>
#include <host/TagUnits.h>

#include <QApplication>
#include <QPaintEngine>
#include <QPainter>
#include <QPaintEvent>

#include <algorithm>

#include "NetInfoLog.h"
#include "NetInfoUILogic.h"
#include "QtCompat.h"

namespace {

constexpr char kSource[] = "../../src/NetInfoUIExPlugin/NetInfoGraphWidget.cpp";

constexpr char kModuleName[] = "NetInfoUIExPlugin";

// Positions in the profile.
constexpr int kBackgroundColour = 0;
constexpr int kUploadColour = 2;
constexpr int kDownloadColour = 3;
constexpr int kGridColour = 4;
constexpr int kLabelFont = 3;

constexpr int kDefaultTextSize = 10; // in pixels
constexpr int kLargestTextSize = 14; // what the caption's margin holds
constexpr qreal kLargestRatio = 4; // of screens; a magnified layer would take the memory instead

//! \a colour, or what reads on \a background when it is none.
[[nodiscard]] QColor readable(const QColor &colour, const QColor &background)
{
    if (colour.isValid())
        return colour;
    return background.lightness() < 128 ? QColor(Qt::white) : QColor(Qt::black);
}

//! The size of a logical pixel in device pixels, or 0 where pixels cannot be copied one to one.
[[nodiscard]] qreal copyRatio(const QPainter &painter)
{
    const QTransform &transform = painter.deviceTransform();
    const bool copies = painter.paintEngine()->type() == QPaintEngine::Raster
        && transform.type() <= QTransform::TxScale && transform.m11() > 0
        && transform.m11() <= kLargestRatio && qFuzzyCompare(transform.m11(), transform.m22());
    return copies ? transform.m11() : 0;
}

} // namespace

GraphWidget::GraphWidget(QWidget *parent)
    : QWidget(parent)
    , m_historyLimit(QtCompat::primaryScreenHeight())
{
    setAutoFillBackground(true);
    init();
}

void GraphWidget::init()
{
    NetInfoGraphConfigParse *const reader = NetInfoGraphConfigParse::GetInstance();
    if (!reader || reader->GetSettingsFromXML(m_colours, m_fonts) != 0)
        NETINFO_TRACE("%s: %s: %s: Get Config data failed", kSource);
    m_gridColour = profileColour(kGridColour);
    m_uploadColour = profileColour(kUploadColour);
    m_downloadColour = profileColour(kDownloadColour);
    // What paints every pixel itself needs no other background below it.
    setAttribute(Qt::WA_OpaquePaintEvent, backgroundColour().alpha() == 255);

    m_font.setWeight(QFont::Normal);
    if (m_fonts.size() <= kLabelFont)
        return;
    m_font.setFamily(m_fonts.at(kLabelFont).family);
    m_fontPixelSize = m_fonts.at(kLabelFont).size.toInt();
    if (m_fontPixelSize > 0)
        m_font.setPixelSize(m_fontPixelSize);
}

QColor GraphWidget::profileColour(int position) const
{
    if (m_colours.size() <= position)
        return QColor();
    return QtCompat::namedColour(NetInfoRules::profileColourName(m_colours.at(position).color));
}

QColor GraphWidget::backgroundColour() const
{
    QColor colour = profileColour(kBackgroundColour);
    if (!colour.isValid()) {
        colour = palette().color(QPalette::Base);
        colour.setAlpha(255);
    }
    return colour;
}

void GraphWidget::DrawGraph(double up, double down)
{
    m_scaleMaximum = NetInfoRules::grownGraphScale(m_scaleMaximum, up, down);
    // Only the upload is trimmed; that the download grows for ever is intended.
    for (int i = NetInfoRules::entriesToDrop(int(m_upload.size()), m_historyLimit); i > 0; --i)
        m_upload.removeLast();
    m_upload.prepend(up);
    m_download.prepend(down);
    update();
}

void GraphWidget::paintEvent(QPaintEvent *event)
{
    NETINFO_TRACE("%s: %s: %s:  Entered", kSource);
    QWidget::paintEvent(event);
    askForWholePaint(event->rect());
    m_plot = NetInfoRules::graphPlot(rect());
    QPainter painter(this);
    if (QApplication::layoutDirection() == Qt::LeftToRight)
        drawLeftToRight(painter);
    else
        drawRightToLeft(painter);
    NETINFO_TRACE("%s: %s: %s: Exit", kSource);
}

void GraphWidget::askForWholePaint(const QRect &painted)
{
    // One for each part: where a window shows a part alone, what is asked for is a part again.
    m_wholePaintAsked = painted != rect() && !m_wholePaintAsked;
    if (m_wholePaintAsked)
        update();
}

void GraphWidget::drawLeftToRight(QPainter &painter)
{
    draw(painter, false);
}

void GraphWidget::drawRightToLeft(QPainter &painter)
{
    draw(painter, true);
}

void GraphWidget::draw(QPainter &painter, bool mirrored)
{
    if (!painter.isActive())
        return;
    const NetInfoGraphFace now = face(mirrored);
    m_layer.update(now, copyRatio(painter));
    m_labelWidth = m_layer.texts().labelWidth;
    m_labelStride = m_layer.texts().labelStride;
    if (m_layer.pixmap().isNull())
        paintGraphFace(painter, now, m_layer.texts());
    else
        m_layer.paint(painter);
    const NetInfoRules::GraphCurveArea area
        = NetInfoRules::graphCurveArea(m_plot, now.area, m_labelWidth, m_scaleMaximum, mirrored);
    paintGraphCurves(painter, now, area, m_upload, m_download, m_lines);
}

NetInfoGraphFace GraphWidget::face(bool mirrored)
{
    const QString module = QLatin1String(kModuleName);
    QVector<TagUnits> units;
    if (NetInfoUILogic *const source = NetInfoUILogic::Instance())
        source->GetSpeedUnitData(units);
    NetInfoGraphFace face;
    face.area = rect();
    face.plot = m_plot;
    face.mirrored = mirrored;
    face.maximum = m_scaleMaximum;
    face.caption
        = tr(QLatin1String("IDS_TRENDS_SPEED")) + CommonUtils::SpeedUnitToString(units, module);
    face.uploadText = tr(QLatin1String("IDS_TRENDS_UPLOAD_SPEED"));
    face.downloadText = tr(QLatin1String("IDS_TRENDS_DOWNLOAD_SPEED"));
    face.font = m_font;
    const int size = m_fontPixelSize > 0 ? m_fontPixelSize : kDefaultTextSize;
    face.font.setPixelSize(std::min(size, kLargestTextSize));
    face.background = backgroundColour();
    face.ink = readable(m_gridColour, face.background);
    face.upload = readable(m_uploadColour, face.background);
    face.download = readable(m_downloadColour, face.background);
    return face;
}

QString GraphWidget::tr(QString key)
{
    return Change::tr(QLatin1String(kModuleName), key);
}
