#include "SettingWalk.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDateEdit>
#include <QFile>
#include <QLineEdit>

namespace {

constexpr int kStepsTold = 40; // of a walk that failed
const QString kPrefix = QStringLiteral("NetInfoSettingDlg_");
constexpr const char *kPageNames[SettingModel::PageCount]
    = { "NetInfoSettingDlg_MainWidget", "NetInfoSettingDlg_WidgetNetInfoSetting" };

QString valueOf(const QWidget *widget)
{
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        return button->isChecked() ? QStringLiteral("on") : QStringLiteral("off");
    if (const auto *combo = qobject_cast<const QComboBox *>(widget))
        return QString::number(combo->currentIndex());
    if (const auto *date = qobject_cast<const QDateEdit *>(widget))
        return date->date().toString(Qt::ISODate);
    return qobject_cast<const QLineEdit *>(widget)->text();
}

QString described(const SettingModel::Controls &controls)
{
    QStringList texts;
    for (auto it = controls.begin(); it != controls.end(); ++it)
        texts << it.key() + QLatin1Char('=') + it->value
                + (it->isEnabled ? QString() : QStringLiteral(" (disabled)"));
    return texts.isEmpty() ? QStringLiteral("no page") : texts.join(QStringLiteral(", "));
}

} // namespace

const QList<SettingWalk::Action> SettingWalk::kActions = {
    { 260, &SettingWalk::clickControl },    { 140, &SettingWalk::pressKey },
    { 140, &SettingWalk::typeSize },        { 60, &SettingWalk::chooseFromList },
    { 40, &SettingWalk::chooseDate },       { 45, &SettingWalk::pressOk },
    { 25, &SettingWalk::pressCancel },      { 45, &SettingWalk::pressSave },
    { 5, &SettingWalk::pressClear },        { 10, &SettingWalk::pressSetLimit },
    { 20, &SettingWalk::changeLanguage },   { 45, &SettingWalk::showOperatorPage },
    { 45, &SettingWalk::showSettingsPage }, { 10, &SettingWalk::hidePages },
    { 15, &SettingWalk::deleteHost },       { 25, &SettingWalk::initialise },
    { 5, &SettingWalk::renewController },   { 15, &SettingWalk::storeElsewhere },
    { 10, &SettingWalk::reportStatistics }, { 60, &SettingWalk::runEvents },
};

void SettingWalk::begin()
{
    // In memory where that can be: a thousand saves would wait for the disk.
    m_user.reset(new QTemporaryDir(QStringLiteral("/dev/shm/tst_settingwalk")));
    if (!m_user->isValid())
        m_user.reset(new QTemporaryDir);
    fakeHost().userDataDirectory = m_user->path() + QLatin1Char('/');
    QStringList values;
    for (int index = 0; index < 17; ++index)
        values << setting(index);
    m_model.reset(new SettingModel(values));
    for (auto &host : m_hosts)
        host.reset(new QWidget);
    start();
    m_model->build(SettingModel::Operator);
}

void SettingWalk::end()
{
    CNetInfoUIService::Destroy();
    for (auto &host : m_hosts)
        host.reset();
}

void SettingWalk::seed(unsigned int number)
{
    m_random.seed(number);
}

QString SettingWalk::history() const
{
    return m_history.join(QLatin1Char('\n'));
}

void SettingWalk::takeStep()
{
    static const int kAll = [] {
        int sum = 0;
        for (const Action &action : kActions)
            sum += action.weight;
        return sum;
    }();
    m_messages = 0;
    fakeHost().messages.clear();
    fakeHost().duringMessage = nullptr;
    int rest = below(kAll);
    for (const Action &action : kActions) {
        rest -= action.weight;
        if (rest < 0) {
            (this->*action.run)();
            break;
        }
    }
    if (m_isDestroyed)
        renewController();
}

void SettingWalk::note(const QString &text)
{
    m_history << text;
    if (m_history.size() > kStepsTold)
        m_history.removeFirst();
}

int SettingWalk::below(int bound)
{
    return int(m_random() % unsigned(bound)); // the same with every library
}

QWidget *SettingWalk::page(SettingModel::Page which) const
{
    return widget(kPageNames[which]);
}

QWidget *SettingWalk::control(SettingModel::Page which, const QString &name) const
{
    const QWidget *const top = page(which);
    return top ? top->findChild<QWidget *>(kPrefix + name) : nullptr;
}

SettingModel::Controls SettingWalk::shown(SettingModel::Page which) const
{
    static const QStringList kNames = { QStringLiteral("radioDaily"),
                                        QStringLiteral("radioWeekly"),
                                        QStringLiteral("radioMonthly"),
                                        QStringLiteral("comboBoxWeekly"),
                                        QStringLiteral("comboBoxMonthly"),
                                        QStringLiteral("checkBoxDataVolume"),
                                        QStringLiteral("lineEditDataVolume"),
                                        QStringLiteral("checkBoxTimeVolume"),
                                        QStringLiteral("lineEditTimeVolume"),
                                        QStringLiteral("checkBoxWarnBefore"),
                                        QStringLiteral("checkBoxWarnExceed"),
                                        QStringLiteral("dateeditSetDate"),
                                        QStringLiteral("dateedit") };
    SettingModel::Controls controls;
    const QWidget *const top = page(which);
    for (const QString &name : kNames) {
        const QWidget *const one = top ? top->findChild<QWidget *>(kPrefix + name) : nullptr;
        if (one)
            controls[name] = { valueOf(one), one->isEnabled() };
    }
    return controls;
}

QString SettingWalk::userFile() const
{
    return m_user->filePath(QStringLiteral("DataUsageLimit.ini"));
}

QString SettingWalk::pageProblem() const
{
    for (const SettingModel::Page which : { SettingModel::Operator, SettingModel::Settings }) {
        const SettingModel::Controls seen = shown(which);
        const SettingModel::Controls expected = m_model->controls(which);
        if (seen != expected)
            return QStringLiteral("page %1 shows\n%2\nand not\n%3")
                .arg(which)
                .arg(described(seen), described(expected));
        const QWidget *const place
            = m_place[which] == kNowhere ? nullptr : m_hosts[m_place[which]].data();
        if (!seen.isEmpty() && page(which)->parentWidget() != place)
            return QStringLiteral("page %1 is elsewhere").arg(which);
    }
    return QString();
}

QString SettingWalk::problem()
{
    QStringList problems = m_log->takeProblems();
    m_log->dropLines();
    problems << m_wrong << pageProblem();
    for (int index = 0; index < 17; ++index) {
        if (setting(index) != m_model->stored().at(index))
            problems << QStringLiteral("stored as %1: '%2' and not '%3'")
                            .arg(index)
                            .arg(setting(index), m_model->stored().at(index));
    }
    QFile file(userFile());
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (bytes != m_model->file())
        problems << QStringLiteral("the file is\n") + QString::fromUtf8(bytes)
                + QStringLiteral("\nand not\n") + QString::fromUtf8(m_model->file());
    if (CNetInfoUIService::instance()->IsActiveSetting() != m_isActive)
        problems << QStringLiteral("active is not %1").arg(m_isActive);
    if (fakeHost().messages.size() != m_messages)
        problems << QStringLiteral("%1 messages").arg(fakeHost().messages.size());
    problems.removeAll(QString());
    return problems.join(QLatin1Char('\n'));
}
