// Building the settings page.
#include "NetInfoSettingUIPlugin_p.h"

#include "NetInfoLog.h"
#include "NetInfoUILogic.h"

namespace {

constexpr char kSource[] = NETINFO_SETTING_PAGE_SOURCE;

constexpr int kDaysOfMonth = 28; // so that every month has the day
constexpr const char *kRadioNames[]
    = { "NetInfoSettingDlg_radioDaily", "NetInfoSettingDlg_radioWeekly",
        "NetInfoSettingDlg_radioMonthly" };

[[nodiscard]] QGroupBox *newGroup(QWidget *page, const char *name, int height)
{
    QGroupBox *const group = new QGroupBox(page);
    group->setObjectName(QLatin1String(name));
    group->setFixedHeight(height);
    return group;
}

//! A label that stands off the control beside it, where the layout has no spacing.
[[nodiscard]] QLabel *newLabel(QWidget *group)
{
    QLabel *const label = new QLabel(group);
    label->setIndent(4);
    return label;
}

} // namespace

void NetInfoSettingUIPlugin::InitNetInfoSetting()
{
    NETINFO_TRACE_LINE("Start: %s: %s: %s %d", kSource);
    if (m_controls->page)
        return;
    createPage();
    initRecurrence();
    assemblePeriod();
    initSetLimit();
    initWarnings();
    assemblePage();
    SetLanguage();
    orderTabs();
    applySettings();
    connect(m_controls->date, SIGNAL(dateChanged(QDate)), this, SLOT(onDateChangeEvent(QDate)));
    NETINFO_TRACE_LINE("End  : %s: %s: %s %d", kSource);
}

void NetInfoSettingUIPlugin::createPage()
{
    Controls &all = *m_controls;
    all.pendingDate.clear(); // chosen on a page that died with its window
    all.pendingWeekday.clear();
    all.pendingDay.clear();
    QWidget *const page = new QWidget;
    all.page = page;
    page->setObjectName(QLatin1String("NetInfoSettingDlg_WidgetNetInfoSetting"));
    all.period = newGroup(page, "NetInfoSettingDlg_GroupBoxSetPeriod", 135);
    all.recurrence = newGroup(all.period, "NetInfoSettingDlg_GroupBoxRecurrence", 115);
    all.recurrence->setFixedWidth(170);
    all.limit = newGroup(page, "NetInfoSettingDlg_groupBoxSetLimit", 65);
    all.warnings = newGroup(page, "NetInfoSettingDlg_GroupBoxSetWarn", 80);
    all.dateWidget = new QWidget(all.period);
    all.dateWidget->setObjectName(QLatin1String("NetInfoSettingDlg_WidgetSetDate"));
    all.dateLabel = new QLabel(all.dateWidget);
    all.date = new DateEdit(all.dateWidget);
    all.date->setObjectName(QLatin1String("NetInfoSettingDlg_dateedit"));
    all.date->setLayoutDirection(Qt::LeftToRight); // before the format, whose parts change places
    all.date->setDisplayFormat(QLatin1String("dd-MM-yyyy"));
    all.date->setCalendarPopup(true);
    all.dateLabel->setBuddy(all.date);
    all.hint = new QLabel(page);
    all.hint->setWordWrap(true);
    all.hint->setMinimumHeight(50);
}

void NetInfoSettingUIPlugin::initRecurrence()
{
    Controls &all = *m_controls;
    NETINFO_REQUIRE_CONTROL(all.recurrence && !all.recurrenceGrid, return );
    QWidget *const group = all.recurrence;
    all.recurrenceGrid = new QGridLayout(group);
    all.recurrenceGrid->setObjectName(QLatin1String("NetInfoSettingDlg_gridlayoutRecurence"));
    all.recurrenceGrid->setHorizontalSpacing(0);
    all.recurrenceGrid->setContentsMargins(4, 0, 4, 0);
    all.isRecurring = new QCheckBox(group);
    all.isRecurring->setObjectName(QLatin1String("NetInfoSettingDlg_dateeditSetDate"));
    all.isRecurringLabel = newLabel(group);
    all.recurrenceGrid->addWidget(all.isRecurring, 1, 1);
    all.recurrenceGrid->addWidget(all.isRecurringLabel, 1, 2, 1, 4);
    for (int i = 0; i < 3; ++i) {
        all.radios[i] = new QRadioButton(group);
        all.radios[i]->setObjectName(QLatin1String(kRadioNames[i]));
        all.radioLabels[i] = newLabel(group);
        all.recurrenceGrid->addWidget(all.radios[i], i + 2, 2);
        all.recurrenceGrid->addWidget(all.radioLabels[i], i + 2, 3, 1, i == 0 ? 3 : 1);
    }
    all.radioLabels[2]->setObjectName(QLatin1String("NetInfoSettingDlg_labelMonthly"));
    all.weekday = new QComboBox(group);
    all.weekday->setObjectName(QLatin1String("NetInfoSettingDlg_comboBoxWeekly"));
    all.day = new QComboBox(group);
    all.day->setObjectName(QLatin1String("NetInfoSettingDlg_comboBoxMonthly"));
    all.recurrenceGrid->addWidget(all.weekday, 3, 5);
    all.recurrenceGrid->addWidget(all.day, 4, 5);
    for (int day = 1; day <= kDaysOfMonth; ++day)
        all.day->addItem(QString::number(day));
    setLanguageSetPeriod();
    connectControls();
}

void NetInfoSettingUIPlugin::connectControls()
{
    const Controls &all = *m_controls;
    connect(all.isRecurring, SIGNAL(clicked(bool)), this, SLOT(onSetRecurrenceSelect(bool)));
    connect(all.radios[0], SIGNAL(clicked(bool)), this, SLOT(onDailyRadioBtnSelect(bool)));
    connect(all.radios[1], SIGNAL(clicked(bool)), this, SLOT(onWeeklyRadioBtnSelect(bool)));
    connect(all.radios[2], SIGNAL(clicked(bool)), this, SLOT(onMonthlyRadioBtnSelect(bool)));
    connect(all.weekday, SIGNAL(currentIndexChanged(int)), this, SLOT(onWeeklyIndexChange(int)));
    connect(all.day, SIGNAL(currentIndexChanged(int)), this, SLOT(onMonthlyIndexChange(int)));
}

void NetInfoSettingUIPlugin::assemblePeriod()
{
    const Controls &all = *m_controls;
    QGridLayout *const dateGrid = new QGridLayout(all.dateWidget);
    dateGrid->setObjectName(QLatin1String("NetInfoSettingDlg_gridlayoutSetDate"));
    dateGrid->setHorizontalSpacing(10);
    dateGrid->addWidget(all.dateLabel, 1, 1);
    dateGrid->addWidget(all.date, 1, 2);
    QVBoxLayout *const dateColumn = new QVBoxLayout;
    dateColumn->setObjectName(QLatin1String("NetInfoSettingDlg_vlayoutSetDate"));
    dateColumn->addWidget(all.dateWidget);
    dateColumn->addStretch();
    QGridLayout *const grid = new QGridLayout(all.period);
    grid->setObjectName(QLatin1String("NetInfoSettingDlg_gridlayoutSetPeriod"));
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addLayout(dateColumn, 1, 1);
    grid->addWidget(all.recurrence, 1, 2);
}

void NetInfoSettingUIPlugin::initSetLimit()
{
    Controls &all = *m_controls;
    NETINFO_REQUIRE_CONTROL(all.limit && !all.limitForm, return );
    all.limitForm = new QFormLayout(all.limit);
    placeLimitForm();
    all.limit->installEventFilter(this);
    all.limitForm->setObjectName(QLatin1String("NetInfoSettingDlg_FormLayoutSetLimit"));
    all.limitForm->setHorizontalSpacing(100);
    all.limitForm->setVerticalSpacing(0);
    all.limitForm->setFormAlignment(Qt::AlignVCenter);
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    if (source && source->IsFunctionEnable(QLatin1String(all.data.feature)))
        initDataVolume();
    if (source && source->IsFunctionEnable(QLatin1String(all.time.feature)))
        initTimeVolume();
}

//! The limit group has no margins of its own; the form takes them over, to keep clear of the
//! group's title and frame.
void NetInfoSettingUIPlugin::placeLimitForm()
{
    const Controls &all = *m_controls;
    if (!all.limit || !all.limitForm)
        return;
    const QMargins frame = all.limit->contentsMargins();
    if (frame.isNull())
        return;
    all.limitForm->setContentsMargins(frame.left() + 9, frame.top(), frame.right() + 9,
                                      frame.bottom());
    all.limit->setContentsMargins(0, 0, 0, 0);
}

//! The limit group's title, font and style set its margins again.
bool NetInfoSettingUIPlugin::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ContentsRectChange)
        placeLimitForm();
    return QObject::eventFilter(watched, event);
}

void NetInfoSettingUIPlugin::initDataVolume()
{
    NETINFO_REQUIRE_CONTROL(m_controls->limitForm && !m_controls->data.checkBox, return );
    createLimitRow(m_controls->data);
    connect(m_controls->data.checkBox, SIGNAL(clicked(bool)), this, SLOT(onDataVolumeSelect(bool)));
}

void NetInfoSettingUIPlugin::initTimeVolume()
{
    NETINFO_REQUIRE_CONTROL(m_controls->limitForm && !m_controls->time.checkBox, return );
    createLimitRow(m_controls->time);
    connect(m_controls->time.checkBox, SIGNAL(clicked(bool)), this, SLOT(onTimeVolumeSelect(bool)));
}

void NetInfoSettingUIPlugin::createLimitRow(LimitRow &row)
{
    QWidget *const group = m_controls->limit;
    row.checkBox = new QCheckBox(group);
    row.checkBox->setObjectName(QLatin1String(row.checkBoxName));
    row.size = new ExtendLineEdit(group);
    row.size->setObjectName(QLatin1String(row.sizeName));
    row.size->setMaxLength(row.digits);
    row.size->setMaximumWidth(110);
    QtCompat::setPattern(row.size, QLatin1String("[1-9][0-9]*$"));
    row.unit = newLabel(group);
    row.unit->setMinimumWidth(60);
    QHBoxLayout *const layout = new QHBoxLayout;
    layout->setObjectName(QLatin1String(row.layoutName));
    layout->setSpacing(0);
    layout->addWidget(row.size);
    layout->addWidget(row.unit);
    m_controls->limitForm->addRow(row.checkBox, layout);
}

void NetInfoSettingUIPlugin::initWarnings()
{
    Controls &all = *m_controls;
    NETINFO_REQUIRE_CONTROL(all.warnings && !all.warningGrid, return );
    all.warningGrid = new QGridLayout(all.warnings);
    all.warningGrid->setObjectName(QLatin1String("NetInfoSettingDlg_gridlayoutWarn"));
    all.warnBefore = new QCheckBox(all.warnings);
    all.warnBefore->setObjectName(QLatin1String("NetInfoSettingDlg_checkBoxWarnBefore"));
    all.warnExceed = new QCheckBox(all.warnings);
    all.warnExceed->setObjectName(QLatin1String("NetInfoSettingDlg_checkBoxWarnExceed"));
    all.warningGrid->addWidget(all.warnBefore, 1, 1);
    all.warningGrid->addWidget(all.warnExceed, 2, 1);
    connect(all.warnBefore, SIGNAL(clicked(bool)), this, SLOT(onWarnBeforeSelect(bool)));
    connect(all.warnExceed, SIGNAL(clicked(bool)), this, SLOT(onWarnExceedSelect(bool)));
}

void NetInfoSettingUIPlugin::assemblePage()
{
    const Controls &all = *m_controls;
    QVBoxLayout *const layout = new QVBoxLayout(all.page);
    layout->setObjectName(QLatin1String("NetInfoSettingDlg_layoutNetInfoMain"));
    layout->addWidget(all.period);
    layout->addWidget(all.limit);
    layout->addWidget(all.warnings);
    layout->addWidget(all.hint);
}

void NetInfoSettingUIPlugin::orderTabs()
{
    const Controls &all = *m_controls;
    QWidget *before = all.date;
    for (QWidget *next :
         { static_cast<QWidget *>(all.isRecurring), static_cast<QWidget *>(all.radios[0]),
           static_cast<QWidget *>(all.radios[1]), static_cast<QWidget *>(all.weekday),
           static_cast<QWidget *>(all.radios[2]), static_cast<QWidget *>(all.day),
           static_cast<QWidget *>(all.data.checkBox), static_cast<QWidget *>(all.data.size),
           static_cast<QWidget *>(all.time.checkBox), static_cast<QWidget *>(all.time.size),
           static_cast<QWidget *>(all.warnBefore), static_cast<QWidget *>(all.warnExceed) }) {
        if (!next) // a row that is switched off
            continue;
        QWidget::setTabOrder(before, next);
        before = next;
    }
}
