// The operator page: the data meter, and the limit's period and size edited in place.
#include "NetInfoUIService.h"

#include <QAbstractItemView>
#include <QMessageBox>
#include <QStyle>
#include <QStyleFactory>

#include <host/CommonUtils.h>

#include "NetInfoLog.h"
#include "NetInfoOperatorPage.h"
#include "NetInfoSettingRules.h"
#include "NetInfoUIService_p.h"

namespace {

constexpr int kWeekdays = 7;
constexpr int kDaysOfMonth = 31;
constexpr int kComboWidth = 65;
constexpr int kSizeDigits = 6;

constexpr const char *kWeekdayKeys[kWeekdays]
    = { "IDS_MONDAY", "IDS_TUESDAY",  "IDS_WEDNESAY", "IDS_THURSDAY",
        "IDS_FRIDAY", "IDS_SATURDAY", "IDS_SUNDAY" };

[[nodiscard]] QRadioButton *newRadio(QWidget *parent, const char *name)
{
    QRadioButton *const radio = new QRadioButton(parent);
    radio->setObjectName(QLatin1String(name));
    return radio;
}

[[nodiscard]] QComboBox *newCombo(QWidget *parent, const char *name)
{
    QComboBox *const combo = new QComboBox(parent);
    combo->setObjectName(QLatin1String(name));
    combo->setFixedWidth(kComboWidth);
    return combo;
}

[[nodiscard]] QPushButton *newButton(QWidget *parent, const char *name)
{
    QPushButton *const button = new QPushButton(parent);
    button->setObjectName(QLatin1String(name));
    button->setFocusPolicy(Qt::NoFocus);
    button->setCursor(Qt::PointingHandCursor);
    return button;
}

//! Clears a group of radio buttons, which otherwise keeps one checked.
void checkRadio(QRadioButton *radio, bool checked)
{
    radio->setAutoExclusive(checked);
    radio->setChecked(checked);
    radio->setAutoExclusive(true);
}

//! Shows the entry that \a text numbers, which is no choice by the user and takes back the one that
//! was \a chosen; none of the list leaves both as they are.
void loadEntry(QComboBox *combo, const QString &text, QString &chosen)
{
    const int entry = NetInfoRules::settingEntry(text, combo->count());
    if (entry < 0)
        return;
    combo->setCurrentIndex(entry);
    chosen.clear();
}

[[nodiscard]] QString checkedText(const QAbstractButton *button)
{
    return NetInfoRules::switchText(button && button->isChecked());
}

} // namespace

void CNetInfoUIService::createOperatorPage()
{
    if (m_page->operatorPage)
        return;
    m_page->operatorPage = new NetInfoOperatorPage;
    m_page->operatorPage->setObjectName(QLatin1String("NetInfoSettingDlg_MainWidget"));
    if (QStyle *const style = QStyleFactory::create(QLatin1String("Windows"))) {
        style->setParent(m_page->operatorPage); // a widget does not own its style
        m_page->operatorPage->setStyle(style);
    }
}

void CNetInfoUIService::initRecurrence()
{
    if (m_operator->recurrence)
        return;
    OperatorPage &page = *m_operator;
    QGroupBox *const group = new QGroupBox(m_page->contentRow);
    page.recurrence = group;
    group->setObjectName(QLatin1String("NetInfoSettingDlg_GroupBoxRecurrence"));
    group->setFixedSize(200, 115);
    page.daily = newRadio(group, "NetInfoSettingDlg_radioDaily");
    page.weekly = newRadio(group, "NetInfoSettingDlg_radioWeekly");
    page.monthly = newRadio(group, "NetInfoSettingDlg_radioMonthly");
    page.weekday = newCombo(group, "NetInfoSettingDlg_comboBoxWeekly");
    page.day = newCombo(group, "NetInfoSettingDlg_comboBoxMonthly");
    for (int i = 0; i < kWeekdays; ++i)
        page.weekday->addItem(QString());
    for (int day = 1; day <= kDaysOfMonth; ++day)
        page.day->addItem(QString::number(day));
    page.chosenWeekday.clear(); // by the page before this one
    page.chosenDay.clear();

    QGridLayout *const grid = new QGridLayout(group);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(page.daily, 2, 0);
    grid->addWidget(page.weekly, 3, 0);
    grid->addWidget(page.weekday, 3, 1);
    grid->addWidget(page.monthly, 4, 0);
    grid->addWidget(page.day, 4, 1);

    connect(page.daily, SIGNAL(clicked(bool)), this, SLOT(onDailyRadioBtnSelect(bool)));
    connect(page.weekly, SIGNAL(clicked(bool)), this, SLOT(onWeeklyRadioBtnSelect(bool)));
    connect(page.monthly, SIGNAL(clicked(bool)), this, SLOT(onMonthlyRadioBtnSelect(bool)));
    connect(page.weekday, SIGNAL(currentIndexChanged(int)), this, SLOT(onWeeklyIndexChange(int)));
    connect(page.day, SIGNAL(currentIndexChanged(int)), this, SLOT(onMonthlyIndexChange(int)));
}

void CNetInfoUIService::initDataVolume()
{
    if (m_operator->dataLimit)
        return;
    OperatorPage &page = *m_operator;
    QGroupBox *const group = new QGroupBox(m_page->contentRow);
    page.dataLimit = group;
    group->setObjectName(QLatin1String("NetInfoSettingDlg_groupBoxSetLimit"));
    group->setFixedSize(135, 60);
    page.dataSwitch = new QCheckBox(group);
    page.dataSwitch->setObjectName(QLatin1String("NetInfoSettingDlg_checkBoxDataVolume"));
    page.dataSize = new ExtendLineEdit(group);
    page.dataSize->setObjectName(QLatin1String("NetInfoSettingDlg_lineEditDataVolume"));
    page.dataSize->setMaxLength(kSizeDigits);
    QtCompat::setPattern(page.dataSize, QLatin1String("[1-9][0-9]*$"));
    page.unit = new QLabel(group);

    QHBoxLayout *const row = new QHBoxLayout;
    row->setObjectName(QLatin1String("NetInfoSettingDlg_hlayoutDataVolume"));
    row->setSpacing(0);
    row->addWidget(page.dataSwitch);
    row->addWidget(page.dataSize);
    row->addWidget(page.unit);
    QVBoxLayout *const layout = new QVBoxLayout(group);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(35);
    layout->addLayout(row);
    connect(page.dataSwitch, SIGNAL(clicked(bool)), this, SLOT(onDataVolumeSelect(bool)));
}

void CNetInfoUIService::createNRLMainWidget()
{
    NETINFO_REQUIRE(m_page->operatorPage && m_page->content && m_page->contentRow, return );
    NETINFO_REQUIRE(m_operator->recurrence && m_operator->dataLimit, return );
    if (m_operator->save)
        return;
    OperatorPage &page = *m_operator;
    page.save = newButton(m_page->contentRow, "NetInfoSettingDlg_savesettingbutton");
    page.clear = newButton(m_page->contentRow, "NetInfoSettingDlg_clearhistorybutton");
    connect(page.save, SIGNAL(clicked()), this, SLOT(onSaveNetInfoSettings()));
    connect(page.clear, SIGNAL(clicked()), this, SLOT(onResetButtonClicked()));
    placeControls();
    setNorellLanguage();
}

void CNetInfoUIService::placeControls()
{
    OperatorPage &page = *m_operator;
    QVBoxLayout *const rows = qobject_cast<QVBoxLayout *>(m_page->content->layout());
    QHBoxLayout *const captionRow = new QHBoxLayout;
    captionRow->addWidget(m_page->caption);
    QHBoxLayout *const meterRow = new QHBoxLayout;
    if (!m_limits->dataMeter) { // it died with another window
        m_limits->dataMeter = createMeter(m_page->content, "NetInfoUIPlugin_ProgressDatavolume");
        if (m_limits->dataMeter && !m_page->dataLimitEnabled)
            m_limits->dataMeter->hide();
    }
    meterRow->addWidget(m_limits->dataMeter);
    meterRow->addStretch();

    QVBoxLayout *const left = new QVBoxLayout;
    left->addWidget(page.recurrence);
    left->addStretch();
    QHBoxLayout *const buttons = new QHBoxLayout;
    buttons->addWidget(page.save);
    buttons->addWidget(page.clear);
    buttons->addStretch();
    QVBoxLayout *const right = new QVBoxLayout;
    right->addWidget(page.dataLimit);
    right->addLayout(buttons);
    right->addStretch();
    QHBoxLayout *const columns = qobject_cast<QHBoxLayout *>(m_page->contentRow->layout());
    columns->addLayout(left);
    columns->addLayout(right);
    columns->addStretch();

    rows->addLayout(captionRow);
    rows->addLayout(meterRow);
    rows->addWidget(m_page->contentRow);
    rows->addStretch();
    m_page->operatorPage->setWidget(m_page->content);
    m_page->operatorPage->setColumns(columns);
}

void CNetInfoUIService::setNorellLanguage()
{
    OperatorPage &page = *m_operator;
    if (!page.save)
        return;
    const auto text = [this](const char *key) { return tr(QLatin1String(key)); };
    m_page->caption->setText(text("IDS_STA_TOTALVOLUME"));
    page.recurrence->setTitle(text("IDS_GRP_RECURRENCE"));
    page.daily->setText(text("IDS_RADIO_DAILY"));
    page.weekly->setText(text("IDC_RADIO_WEEKLY"));
    page.monthly->setText(text("IDS_RADIO_MONTHLY"));
    for (int i = 0; i < kWeekdays; ++i)
        page.weekday->setItemText(i, text(kWeekdayKeys[i])); // no choice by the user, no signal
    page.dataLimit->setTitle(text("IDS_GRP_SETLIMIT"));
    page.unit->setText(text("IDS_UNIT_DATA_VOLUME_MB"));
    nameControls();
    page.save->setText(text("IDS_SAVESETTING"));
    page.clear->setText(text("IDS_CLEAR_BUTTON"));
}

//! What a screen reader says of the controls without a text, and the whole of a text that is cut.
void CNetInfoUIService::nameControls()
{
    OperatorPage &page = *m_operator;
    page.weekday->setAccessibleName(page.weekly->text());
    page.day->setAccessibleName(page.monthly->text());
    page.dataSwitch->setAccessibleName(page.dataLimit->title());
    page.dataSize->setAccessibleName(page.dataLimit->title() + QLatin1Char(' ')
                                     + page.unit->text());
    if (m_limits->dataMeter)
        m_limits->dataMeter->setAccessibleName(m_page->caption->text());
    page.weekday->setToolTip(page.weekday->currentText());
    QAbstractItemView *const list = page.weekday->view();
    list->setMinimumWidth(list->sizeHintForColumn(0));
}

void CNetInfoUIService::initNRLNetInfoSettings()
{
    OperatorPage &page = *m_operator;
    NETINFO_REQUIRE(page.save && m_limits->store, return );
    const auto isOn = [this](int index) {
        return m_limits->store->value(index) == NetInfoRules::switchText(true);
    };
    loadEntry(page.weekday, m_limits->store->value(VLS_START_WEEK_DATE), page.chosenWeekday);
    loadEntry(page.day, m_limits->store->value(VLS_START_MONTH_DATE), page.chosenDay);
    page.weekday->setEnabled(false);
    page.day->setEnabled(false);
    for (QRadioButton *radio : { page.daily.data(), page.weekly.data(), page.monthly.data() })
        checkRadio(radio, false);
    if (isOn(VLS_RADIO_DAILY))
        onDailyRadioBtnSelect(true);
    else if (isOn(VLS_RADIO_WEEKLY))
        onWeeklyRadioBtnSelect(true);
    else if (isOn(VLS_RADIO_MONTHLY))
        onMonthlyRadioBtnSelect(true);
    page.dataSize->setText(m_limits->store->value(VLS_SIZE_VOLUME));
    page.dataSwitch->setChecked(isOn(VLS_CHK_VOLUME));
    onDataVolumeSelect(isOn(VLS_CHK_VOLUME));
}

void CNetInfoUIService::selectRecurrence(QRadioButton *radio, QComboBox *own)
{
    checkRadio(radio, true);
    for (QComboBox *combo : { m_operator->weekday.data(), m_operator->day.data() })
        combo->setEnabled(combo == own);
}

void CNetInfoUIService::onDailyRadioBtnSelect(bool checked)
{
    NETINFO_REQUIRE(m_operator->daily && m_operator->weekday && m_operator->day, return );
    if (checked)
        selectRecurrence(m_operator->daily, nullptr);
}

void CNetInfoUIService::onWeeklyRadioBtnSelect(bool checked)
{
    NETINFO_REQUIRE(m_operator->weekly && m_operator->weekday && m_operator->day, return );
    if (checked)
        selectRecurrence(m_operator->weekly, m_operator->weekday);
}

void CNetInfoUIService::onMonthlyRadioBtnSelect(bool checked)
{
    NETINFO_REQUIRE(m_operator->monthly && m_operator->weekday && m_operator->day, return );
    if (checked)
        selectRecurrence(m_operator->monthly, m_operator->day);
}

void CNetInfoUIService::onWeeklyIndexChange(int index)
{
    m_operator->chosenWeekday = QString::number(index, 10);
    if (m_operator->weekday)
        m_operator->weekday->setToolTip(m_operator->weekday->currentText());
}

void CNetInfoUIService::onMonthlyIndexChange(int index)
{
    m_operator->chosenDay = QString::number(index, 10);
}

void CNetInfoUIService::onDataVolumeSelect(bool checked)
{
    NETINFO_REQUIRE(m_operator->dataSize, return );
    m_operator->dataSize->setEnabled(checked);
}

void CNetInfoUIService::onSaveNetInfoSettings()
{
    NETINFO_REQUIRE(m_limits->store, return );
    const OperatorPage &page = *m_operator;
    const QString size = page.dataSize ? page.dataSize->text() : QString();
    if (page.dataSwitch && page.dataSwitch->isChecked() && size.isEmpty()) {
        showPageMessage("IDS_SAVE_FAILED");
        return;
    }
    NetInfoSettingUILogic *const store = m_limits->store;
    store->updateUseLimitSetting(VLS_RADIO_DAILY, checkedText(page.daily));
    store->updateUseLimitSetting(VLS_RADIO_WEEKLY, checkedText(page.weekly));
    store->updateUseLimitSetting(VLS_RADIO_MONTHLY, checkedText(page.monthly));
    if (!page.chosenWeekday.isEmpty())
        store->updateUseLimitSetting(VLS_START_WEEK_DATE, page.chosenWeekday);
    if (!page.chosenDay.isEmpty())
        store->updateUseLimitSetting(VLS_START_MONTH_DATE, page.chosenDay);
    store->updateUseLimitSetting(VLS_CHK_VOLUME, checkedText(page.dataSwitch));
    store->updateUseLimitSetting(VLS_SIZE_VOLUME, size);
    store->saveUseLimitSetting();
    InitParam();
    updateStoredStatistics();
    showPageMessage("IDS_CHANGED_SAVE");
}

void CNetInfoUIService::showPageMessage(const char *text)
{
    CommonUtils::ShowMessage(QMessageBox::Information, m_page->operatorPage,
                             tr(QLatin1String("IDS_PROPMT")), tr(QLatin1String(text)),
                             tr(QLatin1String("IDS_OK")));
}
