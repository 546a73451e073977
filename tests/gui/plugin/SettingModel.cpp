#include "SettingModel.h"

#include <QRegularExpression>

namespace {

constexpr const char *kRadios[] = { "radioDaily", "radioWeekly", "radioMonthly" };
constexpr char kWeekday[] = "comboBoxWeekly";
constexpr char kDay[] = "comboBoxMonthly";
constexpr char kRecurring[] = "dateeditSetDate";
constexpr char kDate[] = "dateedit";
constexpr char kDataSwitch[] = "checkBoxDataVolume";
constexpr char kDataSize[] = "lineEditDataVolume";
constexpr char kTimeSwitch[] = "checkBoxTimeVolume";
constexpr char kTimeSize[] = "lineEditTimeVolume";
constexpr char kWarnBefore[] = "checkBoxWarnBefore";
constexpr char kWarnAfter[] = "checkBoxWarnExceed";

// Indices of the store.
constexpr int kFirstRadio = 1;
constexpr int kDataIsOn = 4;
constexpr int kTimeIsOn = 5;
constexpr int kSwitchToSize = 2; // from a limit's switch to its size
constexpr int kWarn = 8;
constexpr int kStartDate = 14;
constexpr int kStartWeekday = 15;
constexpr int kStartDay = 16;

constexpr const char *kLines[]
    = { "chkRecurrence",     "radioDaily",        "radioWeekly",       "radioMonthly",
        "chkVolume",         "chkTimeVolume",     "SizeVolume",        "SizeTimeVolume",
        "chkWarnbefore",     "chkWarnAfter",      "ShowDataWarnAfter", "ShowDataWarnBefor",
        "ShowTimeWarnBefor", "ShowTimeWarnAfter", "startdate",         "startweekdate",
        "startmonthdate" };

QString name(const char *text)
{
    return QLatin1String(text);
}

QString onOff(bool on)
{
    return on ? QStringLiteral("on") : QStringLiteral("off");
}

QString trueFalse(bool on)
{
    return on ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

SettingModel::SettingModel(const QStringList &store)
    : m_store(store)
{
}

void SettingModel::setLimitRows(bool data, bool time)
{
    m_hasData = data;
    m_hasTime = time;
}

void SettingModel::build(Page page)
{
    Controls &all = m_controls[page];
    all.clear();
    m_chosen[page].clear();
    for (const char *radio : kRadios)
        all[name(radio)] = { onOff(false) };
    for (const char *combo : { kWeekday, kDay })
        all[name(combo)] = { QStringLiteral("0") };
    const bool isSettings = page == Settings;
    if (m_hasData || !isSettings) {
        all[name(kDataSwitch)] = { onOff(false) };
        all[name(kDataSize)] = {};
    }
    if (m_hasTime && isSettings) {
        all[name(kTimeSwitch)] = { onOff(false) };
        all[name(kTimeSize)] = {};
    }
    if (isSettings) {
        for (const char *checkBox : { kRecurring, kWarnBefore, kWarnAfter })
            all[name(checkBox)] = { onOff(false) };
        all[name(kDate)] = { QStringLiteral("2000-01-01") };
    }
    load(page);
    m_chosen[page].remove(name(kDate)); // the date that is shown first was not chosen
}

void SettingModel::load(Page page)
{
    if (m_controls[page].isEmpty())
        return;
    loadEntry(page, name(kWeekday), kStartWeekday);
    loadEntry(page, name(kDay), kStartDay);
    int radio = -1;
    for (int i = 2; i >= 0; --i)
        radio = isTrue(kFirstRadio + i) ? i : radio;
    selectRadio(page, radio);
    if (page == Operator) {
        loadLimit(page, kDataSwitch, kDataSize, kDataIsOn);
        return;
    }
    loadDate();
    setRecurring(isTrue(0));
    if (m_hasData && m_hasTime) { // else neither is loaded
        loadLimit(page, kDataSwitch, kDataSize, kDataIsOn);
        loadLimit(page, kTimeSwitch, kTimeSize, kTimeIsOn);
    }
    setOn(page, name(kWarnBefore), isTrue(kWarn));
    setOn(page, name(kWarnAfter), isTrue(kWarn + 1));
}

void SettingModel::drop(Page page)
{
    m_controls[page].clear();
    m_chosen[page].clear();
}

void SettingModel::store(int index, const QString &value)
{
    m_store[index] = value;
}

void SettingModel::loadEntry(Page page, const QString &combo, int index)
{
    bool isNumber = false;
    const int entry = m_store.at(index).toInt(&isNumber);
    if (!isNumber || entry < 0 || entry >= entries(page, combo))
        return;
    const QString text = QString::number(entry);
    const bool isNew = m_controls[page].value(combo).value != text;
    m_controls[page][combo].value = text;
    if (page == Operator)
        m_chosen[page].remove(combo);
    else if (isNew)
        m_chosen[page][combo] = text;
}

void SettingModel::loadDate()
{
    const QDate date = QDate::fromString(m_store.at(kStartDate), QStringLiteral("dd-MM-yyyy"));
    const QString text = date.toString(Qt::ISODate);
    if (!date.isValid() || m_controls[Settings].value(name(kDate)).value == text)
        return;
    m_controls[Settings][name(kDate)].value = text;
    m_chosen[Settings][name(kDate)] = m_store.at(kStartDate);
}

void SettingModel::loadLimit(Page page, const char *checkBox, const char *size, int index)
{
    setOn(page, name(checkBox), isTrue(index));
    m_controls[page][name(size)] = { m_store.at(index + kSwitchToSize), isTrue(index) };
}

void SettingModel::selectRadio(Page page, int radio)
{
    for (int i = 0; i < 3; ++i) {
        setOn(page, name(kRadios[i]), i == radio);
        enable(page, name(kRadios[i]), true);
    }
    enable(page, name(kWeekday), radio == 1);
    enable(page, name(kDay), radio == 2);
}

void SettingModel::setRecurring(bool on)
{
    setOn(Settings, name(kRecurring), on);
    enable(Settings, name(kDate), !on);
    for (int i = 0; i < 3; ++i)
        enable(Settings, name(kRadios[i]), on);
    for (int i = 0; i < 3; ++i) {
        if (on && isOn(Settings, name(kRadios[i])))
            selectRadio(Settings, i);
    }
    if (!on) {
        enable(Settings, name(kWeekday), false);
        enable(Settings, name(kDay), false);
    }
}

void SettingModel::click(Page page, const QString &control)
{
    if (!m_controls[page].contains(control) || !m_controls[page].value(control).isEnabled)
        return;
    for (int i = 0; i < 3; ++i) {
        if (control == name(kRadios[i]))
            selectRadio(page, i);
    }
    if (control == name(kRecurring))
        setRecurring(!isOn(page, control));
    else if (control == name(kDataSwitch) || control == name(kTimeSwitch))
        clickLimit(page, control);
    else if (control == name(kWarnBefore) || control == name(kWarnAfter))
        setOn(page, control, !isOn(page, control));
}

void SettingModel::clickLimit(Page page, const QString &control)
{
    const bool isData = control == name(kDataSwitch);
    const bool on = !isOn(page, control);
    setOn(page, control, on);
    enable(page, name(isData ? kDataSize : kTimeSize), on);
    const QString other = name(isData ? kTimeSwitch : kDataSwitch);
    if (on || !m_controls[page].contains(other) || isOn(page, other))
        return;
    setOn(page, name(kWarnBefore), false); // no limit, no warnings
    setOn(page, name(kWarnAfter), false);
}

void SettingModel::type(Page page, const QString &control, const QString &text)
{
    static const QRegularExpression size(QStringLiteral("\\A([1-9][0-9]*)?\\z"));
    if (m_controls[page].value(control).isEnabled && text.size() <= digits(control)
        && size.match(text).hasMatch())
        m_controls[page][control].value = text;
}

void SettingModel::choose(Page page, const QString &control, int entry)
{
    const Control before = m_controls[page].value(control);
    const int chosen = qBound(0, entry, entries(page, control) - 1);
    if (!before.isEnabled || before.value == QString::number(chosen))
        return;
    m_controls[page][control].value = QString::number(chosen);
    m_chosen[page][control] = QString::number(chosen);
}

void SettingModel::chooseDate(QDate date)
{
    Control &control = m_controls[Settings][name(kDate)];
    if (!control.isEnabled || control.value == date.toString(Qt::ISODate))
        return;
    control.value = date.toString(Qt::ISODate);
    m_chosen[Settings][name(kDate)] = date.toString(QStringLiteral("dd-MM-yyyy"));
}

bool SettingModel::save(Page page)
{
    if (m_controls[page].isEmpty())
        return false;
    if (page == Operator && isOn(page, name(kDataSwitch))
        && m_controls[page].value(name(kDataSize)).value.isEmpty())
        return false;
    for (int i = 0; i < 3; ++i)
        m_store[kFirstRadio + i] = trueFalse(isOn(page, name(kRadios[i])));
    storeChosen(page);
    if (!storeLimit(page, kDataSwitch, kDataSize, kDataIsOn)
        || !storeLimit(page, kTimeSwitch, kTimeSize, kTimeIsOn))
        return false; // what is in memory by now stays there
    if (page == Settings) {
        m_store[kWarn] = trueFalse(isOn(page, name(kWarnBefore)));
        m_store[kWarn + 1] = trueFalse(isOn(page, name(kWarnAfter)));
    }
    writeFile();
    return true;
}

void SettingModel::storeChosen(Page page)
{
    const QMap<QString, QString> &chosen = m_chosen[page];
    m_store[kStartDate] = chosen.value(name(kDate), m_store.at(kStartDate));
    m_store[kStartWeekday] = chosen.value(name(kWeekday), m_store.at(kStartWeekday));
    m_store[kStartDay] = chosen.value(name(kDay), m_store.at(kStartDay));
}

bool SettingModel::storeLimit(Page page, const char *checkBox, const char *size, int index)
{
    if (!m_controls[page].contains(name(checkBox)))
        return true;
    const QString text = m_controls[page].value(name(size)).value;
    if (page == Settings && text.isEmpty()) // also when the limit is off
        return false;
    m_store[index] = trueFalse(isOn(page, name(checkBox)));
    m_store[index + kSwitchToSize] = text;
    return true;
}

void SettingModel::writeFile()
{
    m_file = "[uselimit]";
    for (int i = 0; i < m_store.size(); ++i)
        m_file += '\n' + QByteArray(kLines[i]) + '=' + m_store.at(i).toLatin1();
}

const SettingModel::Controls &SettingModel::controls(Page page) const
{
    return m_controls[page];
}

const QStringList &SettingModel::stored() const
{
    return m_store;
}

QByteArray SettingModel::file() const
{
    return m_file;
}

int SettingModel::entries(Page page, const QString &combo)
{
    if (combo == name(kWeekday))
        return 7;
    return page == Operator ? 31 : 28;
}

int SettingModel::digits(const QString &size)
{
    return size == name(kTimeSize) ? 5 : 6;
}

bool SettingModel::isOn(Page page, const QString &control) const
{
    return m_controls[page].value(control).value == onOff(true);
}

bool SettingModel::isTrue(int index) const
{
    return m_store.at(index) == trueFalse(true);
}

void SettingModel::setOn(Page page, const QString &control, bool on)
{
    if (m_controls[page].contains(control))
        m_controls[page][control].value = onOff(on);
}

void SettingModel::enable(Page page, const QString &control, bool enabled)
{
    m_controls[page][control].isEnabled = enabled;
}
