// The limit area of the normal page: meters, tip and buttons.
#include "NetInfoUIService.h"

#include <new>

#include "NetInfoLog.h"
#include "NetInfoUIService_p.h"

namespace {

constexpr char kSource[] = NETINFO_SERVICE_SOURCE;

constexpr int kAreaHeight = 183;
constexpr int kMeterWidth = 228;
constexpr int kMeterHeight = 20;

//! A widget of \a area named \a name; null without memory.
template <typename Widget>
[[nodiscard]] Widget *newWidget(QWidget *area, const char *name)
{
    Widget *const widget = new (std::nothrow) Widget(area);
    if (widget)
        widget->setObjectName(QLatin1String(name));
    return widget;
}

} // namespace

void CNetInfoUIService::createVolumeLimitWidget()
{
    NETINFO_REQUIRE(m_page->leftLayout && m_page->source, return );
    if (m_limits->area)
        return;
    QWidget *const area = new (std::nothrow) QWidget(m_page->leftArea);
    m_limits->area = area;
    m_limits->layout = area ? new (std::nothrow) QVBoxLayout(area) : nullptr;
    if (m_limits->layout)
        addDataVolumeWidget();
    if (!m_limits->timeMeter || !addTipAndButtons()) {
        NETINFO_TRACE("%s: %s: %s: Memory not allocated for widget", kSource);
        delete area; // with everything in it
        return;
    }
    area->setObjectName(QLatin1String("NetInfoUIPlugin_WidgetVolumeLimit"));
    area->setFixedHeight(kAreaHeight);
    m_limits->layout->setObjectName(QLatin1String("NetInfoUIPlugin_LayoutVerticalBox"));
    m_page->leftLayout->addWidget(area);
    updateDataVolumeStrings();
    if (!m_page->dataLimitEnabled && !m_page->timeLimitEnabled)
        addNoteInTree();
}

SkProgressBar *CNetInfoUIService::createMeter(QWidget *parent, const char *name)
{
    SkProgressBar *const meter = newWidget<SkProgressBar>(parent, name);
    if (meter) {
        meter->setFixedSize(kMeterWidth, kMeterHeight);
        meter->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    }
    return meter;
}

void CNetInfoUIService::addDataVolumeWidget()
{
    NETINFO_REQUIRE(m_limits->area && m_limits->layout, return );
    if (m_limits->timeMeter)
        return;
    QWidget *const area = m_limits->area;
    QLabel *const dataCaption = newWidget<QLabel>(area, "NetInfoUIPlugin_LabelDataVolume");
    QLabel *const timeCaption = newWidget<QLabel>(area, "NetInfoUIPlugin_LabelTimeVolume");
    SkProgressBar *const timeMeter = createMeter(area, "NetInfoUIPlugin_ProgressVolume");
    if (!dataCaption || !timeCaption || !timeMeter)
        return;
    if (!m_limits->dataMeter) // else the operator page has it, and has outlived the last area
        m_limits->dataMeter = createMeter(area, "NetInfoUIPlugin_ProgressDatavolume");
    if (!m_limits->dataMeter)
        return;
    m_limits->dataCaption = dataCaption;
    m_limits->timeCaption = timeCaption;
    m_limits->timeMeter = timeMeter;
    const auto add = [this](QWidget *widget, bool shown) {
        if (!shown)
            widget->hide();
        m_limits->layout->addWidget(widget, 0, Qt::AlignLeft);
    };
    add(dataCaption, m_page->dataLimitEnabled);
    if (m_limits->dataMeter->parentWidget() == area)
        add(m_limits->dataMeter, m_page->dataLimitEnabled);
    add(timeCaption, m_page->timeLimitEnabled);
    add(timeMeter, m_page->timeLimitEnabled);
}

bool CNetInfoUIService::addTipAndButtons()
{
    QWidget *const area = m_limits->area;
    QLabel *const tip = newWidget<QLabel>(area, "NetInfoSettingDlg_TipLabel");
    QHBoxLayout *const row = tip ? new (std::nothrow) QHBoxLayout : nullptr;
    if (!row)
        return false;
    m_limits->layout->addWidget(tip);
    m_limits->layout->addLayout(row);
    QPushButton *const reset = newWidget<QPushButton>(area, "NetInfoUIPlugin_ButtonResetCounter");
    QPushButton *const setLimit = newWidget<QPushButton>(area, "NetInfoUIPlugin_ButtonSetLimit");
    if (!reset || !setLimit)
        return false;
    m_limits->tip = tip;
    m_limits->reset = reset;
    m_limits->setLimit = setLimit;
    tip->setWordWrap(true);
    tip->setVisible(isFunctionEnabled("STATISTICSNOTES"));
    row->setObjectName(QLatin1String("NetInfoUIPlugin_LayoutButtonBox"));
    row->setSpacing(10);
    row->addWidget(reset);
    row->addWidget(setLimit);
    row->addStretch();
    connect(reset, SIGNAL(clicked()), this, SLOT(onResetButtonClicked()));
    connect(setLimit, SIGNAL(clicked()), this, SLOT(onSetLimitButtonClicked()));
    return true;
}

void CNetInfoUIService::updateDataVolumeStrings()
{
    if (!m_limits->area)
        return;
    m_limits->dataCaption->setText(tr(QLatin1String("IDS_STA_TOTALVOLUME")));
    m_limits->timeCaption->setText(tr(QLatin1String("IDC_STA_TIMEVOLUME")));
    if (m_limits->timeMeter)
        m_limits->timeMeter->setAccessibleName(m_limits->timeCaption->text());
    m_limits->tip->setText(tr(QLatin1String("IDC_VOLUMENOTES")));
    m_limits->reset->setText(tr(QLatin1String("IDS_BTN_RESET")));
    m_limits->setLimit->setText(tr(QLatin1String("IDC_BTN_SETLIMIT")));
}

void CNetInfoUIService::onSetLimitButtonClicked()
{
    QRect rect = m_page->hostRect;
    ShowSettingDialog(m_page->hostParent, rect);
}
