#include "PluginTest.h"

#include <QApplication>
#include <QTest>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include "NetInfoSettingUILogic.h"
#include "NetInfoUILogic.h"

namespace {

int depthOf(const QTreeWidgetItem *item)
{
    return item->parent() ? depthOf(item->parent()) + 1 : 0;
}

bool isHidden(const QTreeWidgetItem *item)
{
    return item->isHidden() || (item->parent() && isHidden(item->parent()));
}

} // namespace

const QString PluginTest::kSource
    = QStringLiteral("../../src/NetInfoUIExPlugin/NetInfoUIService.cpp");

void PluginTest::init()
{
    m_font = QApplication::font();
    resetFakeHost();
    resetFakeSdk();
    m_folder.reset(new PluginFolder);
    m_folder->writeSwitches(PluginFolder::allSwitches());
    m_window.reset(new QWidget);
    m_window->resize(600, 400);
    m_log.reset(new TestLog);
    const QString on = QStringLiteral("true");
    const QString off = QStringLiteral("false");
    set(VLS_CHK_RECURRENCE,
        { on, off, off, on, off, off, QStringLiteral("1024"), QStringLiteral("100"), on, on, on, on,
          on, on, QString(), QStringLiteral("0"), QStringLiteral("0") });
    m_log->takeLines();
}

void PluginTest::cleanup()
{
    CNetInfoUIService::Destroy();
    NetInfoUILogic::Destroy();
    m_window.reset();
    QApplication::setLayoutDirection(Qt::LeftToRight);
    QApplication::setFont(m_font);
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char(10))));
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
    QVERIFY(!fakeSdkHasCallback());
}

CNetInfoUIService *PluginTest::start(const QStringList &off)
{
    QStringList on = PluginFolder::allSwitches();
    for (const QString &name : off)
        on.removeAll(name);
    m_folder->writeSwitches(on, off);
    CNetInfoUIService *const service = CNetInfoUIService::instance();
    if (!service->Init())
        qFatal("Init failed");
    m_log->takeLines();
    return service;
}

void PluginTest::set(int firstIndex, const QStringList &values)
{
    for (int i = 0; i < values.size(); ++i)
        NetInfoSettingUILogic::GetInstance()->updateUseLimitSetting(firstIndex + i, values.at(i));
}

QString PluginTest::setting(int index)
{
    return NetInfoSettingUILogic::GetInstance()->value(index);
}

void PluginTest::useNarrowFont()
{
    QFont narrow = m_font;
    narrow.setPixelSize(4);
    QApplication::setFont(narrow);
}

void PluginTest::show()
{
    m_window->show();
    QRect rect(10, 20, 500, 300);
    CNetInfoUIService::instance()->ShowWindow(m_window.data(), rect);
    m_log->takeLines();
}

QTreeWidget *PluginTest::tree() const
{
    return qobject_cast<QTreeWidget *>(widget("NetInfoUIPlugin_WidgetTree"));
}

QStringList PluginTest::rows() const
{
    QStringList texts;
    for (QTreeWidgetItemIterator it(tree()); *it; ++it) {
        if (!isHidden(*it))
            texts << QString(depthOf(*it) * 2, QLatin1Char(' ')) + (*it)->text(0);
    }
    return texts;
}

QTreeWidgetItem *PluginTest::row(const QString &text, const QString &parent) const
{
    for (QTreeWidgetItemIterator it(tree()); *it; ++it) {
        const QString parentText = (*it)->parent() ? (*it)->parent()->text(0) : QString();
        if (!isHidden(*it) && (*it)->text(0).startsWith(text) && parentText.startsWith(parent))
            return *it;
    }
    return nullptr;
}

QWidget *PluginTest::widget(const char *name)
{
    const QWidgetList all = QApplication::allWidgets();
    for (QWidget *one : all) {
        if (one->objectName() == QLatin1String(name))
            return one;
    }
    return nullptr;
}
