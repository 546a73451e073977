// What the host and the rest of the program do.
#include "SettingWalk.h"

#include <QApplication>

QRect SettingWalk::anyRect()
{
    const QPoint corner(below(30), below(30));
    const int width = below(10) == 0 ? 1 : 200 + below(600);
    return QRect(corner, QSize(width, 100 + below(500)));
}

void SettingWalk::changeLanguage()
{
    static const QStringList kLanguages
        = { QString(), QStringLiteral(".german"), QStringLiteral(".arabic") };
    const int language = below(int(kLanguages.size()));
    note(QStringLiteral("language %1").arg(language));
    fakeHost().language = kLanguages.at(language);
    QApplication::setLayoutDirection(language == 2 ? Qt::RightToLeft : Qt::LeftToRight);
    CNetInfoUIService::instance()->Notify(320, 0, 0);
}

void SettingWalk::showOperatorPage()
{
    const int host = below(kHosts);
    note(QStringLiteral("ShowWindow in host %1").arg(host));
    QRect rect = anyRect();
    CNetInfoUIService::instance()->ShowWindow(m_hosts[host].data(), rect);
    m_model->load(SettingModel::Operator);
    if (!m_model->controls(SettingModel::Operator).isEmpty())
        m_place[SettingModel::Operator] = host;
}

void SettingWalk::showSettingsPage()
{
    const int host = below(kHosts);
    note(QStringLiteral("ShowSettingDialog in host %1").arg(host));
    QRect rect = anyRect();
    CNetInfoUIService::instance()->ShowSettingDialog(m_hosts[host].data(), rect);
    if (m_model->controls(SettingModel::Settings).isEmpty())
        m_model->build(SettingModel::Settings);
    m_place[SettingModel::Settings] = host;
    m_isActive = true;
}

void SettingWalk::hidePages()
{
    CNetInfoUIService *const service = CNetInfoUIService::instance();
    const int way = below(4);
    note(QStringLiteral("hide %1").arg(way));
    QRect rect = anyRect();
    if (way == 0)
        service->Hide();
    else if (way == 1)
        service->HideSetting();
    else if (way == 2)
        service->FitSize(rect);
    else
        m_hosts[below(kHosts)]->setVisible(below(3) > 0);
}

void SettingWalk::deleteHost()
{
    const int host = below(kHosts);
    note(QStringLiteral("delete host %1").arg(host));
    dropHost(host);
}

void SettingWalk::dropHost(int host)
{
    note(QStringLiteral("  host %1 goes").arg(host));
    m_hosts[host].reset(new QWidget);
    m_hosts[host]->resize(700, 600);
    m_hosts[host]->show();
    for (const SettingModel::Page which : { SettingModel::Operator, SettingModel::Settings }) {
        if (m_place[which] != host)
            continue;
        m_place[which] = kNowhere;
        m_model->drop(which);
        ++m_died;
    }
}

void SettingWalk::initialise()
{
    note(QStringLiteral("Init"));
    CNetInfoUIService::instance()->Init();
    if (m_model->controls(SettingModel::Operator).isEmpty())
        m_model->build(SettingModel::Operator);
    else
        m_model->load(SettingModel::Operator);
}

void SettingWalk::destroyController()
{
    note(QStringLiteral("  the controller goes"));
    CNetInfoUIService::Destroy();
    for (const SettingModel::Page which : { SettingModel::Operator, SettingModel::Settings }) {
        m_place[which] = kNowhere;
        m_model->drop(which);
    }
    m_isActive = false;
    m_isDestroyed = true;
}

void SettingWalk::renewController()
{
    if (!m_isDestroyed)
        destroyController();
    m_isDestroyed = false;
    const bool hasData = below(5) > 0;
    const bool hasTime = below(5) > 0;
    note(QStringLiteral("a new controller, limits %1 and %2").arg(hasData).arg(hasTime));
    QStringList off;
    if (!hasData)
        off << QStringLiteral("DATAVOLUMELIMIT");
    if (!hasTime)
        off << QStringLiteral("TIMEVOLUMELIMIT");
    start(off);
    m_model->setLimitRows(hasData, hasTime);
    m_model->build(SettingModel::Operator);
}

//! The limits themselves stay, so that nothing is to be warned of.
void SettingWalk::storeElsewhere()
{
    static const QList<int> kSwitches = { 0, 1, 2, 3, 8, 9, 10, 11, 12, 13 };
    static const QStringList kStates
        = { QStringLiteral("true"), QStringLiteral("false"), QString() };
    static const QStringList kDates = { QStringLiteral("05-03-2024"), QStringLiteral("31-02-2024"),
                                        QStringLiteral("29-02-2028"), QString() };
    static const QStringList kEntries
        = { QStringLiteral("-1"), QStringLiteral("abc"), QString(), QStringLiteral("99999999999") };
    int index = kSwitches.at(below(int(kSwitches.size())));
    QString value = kStates.at(below(int(kStates.size())));
    const int kind = below(4);
    if (kind == 0) {
        index = 14;
        value = kDates.at(below(int(kDates.size())));
    } else if (kind == 1) {
        index = 15 + below(2);
        value
            = below(3) == 0 ? kEntries.at(below(int(kEntries.size()))) : QString::number(below(33));
    }
    note(QStringLiteral("store '%1' as %2").arg(value).arg(index));
    set(index, { value });
    m_model->store(index, value);
}

void SettingWalk::reportStatistics()
{
    note(QStringLiteral("statistics"));
    if (below(2) == 0)
        CNetInfoUIService::instance()->Notify(837, 0, 0);
    else
        sendStatisticsEvent(true, below(2));
}

void SettingWalk::runEvents()
{
    note(QStringLiteral("events"));
    QApplication::processEvents();
}
