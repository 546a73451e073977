// The limit area of the normal page.

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

#include <functional>
#include <utility>

#include "LimitTest.h"
#include "NetInfoSettingsPage.h"
#include "NetInfoSettingUILogic.h"
#include "NetInfoUILogic.h"

namespace {

constexpr char kDataCaption[] = "NetInfoUIPlugin_LabelDataVolume";
constexpr char kTimeCaption[] = "NetInfoUIPlugin_LabelTimeVolume";
constexpr char kDataMeter[] = "NetInfoUIPlugin_ProgressDatavolume";
constexpr char kTimeMeter[] = "NetInfoUIPlugin_ProgressVolume";

class FakeSettingsPage : public NetInfoSettingsPage
{
public:
    void ShowNetInfoSettingDlg(QWidget *window, QRect &place) override
    {
        parent = window;
        rect = place;
        ++shown;
    }
    bool HideNetInfoSetting() override
    {
        return true;
    }
    bool SaveNetInfoSettings() override
    {
        return true;
    }
    void CancelNetInfoSetting() override { }
    void SetLanguage() override { }
    QWidget *pageWidget() const override
    {
        return nullptr;
    }

    QPointer<QWidget> parent;
    QRect rect;
    int shown = 0;
};

//! What the limit area holds when the page's next part is made, which is before the data meter
//! moves to the operator page.
class AreaWatch : public QObject
{
public:
    explicit AreaWatch(std::function<QWidget *()> area)
        : m_area(std::move(area))
    {
        qApp->installEventFilter(this);
    }
    ~AreaWatch() override
    {
        qApp->removeEventFilter(this);
    }

    QStringList names;
    bool allLeft = true;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool isNextPart = event->type() == QEvent::ChildAdded && names.isEmpty()
            && watched->objectName() == QLatin1String("NetInfoUIPlugin_WidgetParent");
        const QWidget *const area = isNextPart ? m_area() : nullptr;
        for (int i = 0; area && i < area->layout()->count(); ++i) {
            QLayoutItem *const item = area->layout()->itemAt(i);
            names << (item->widget() ? item->widget() : static_cast<QObject *>(item->layout()))
                         ->objectName();
            allLeft = allLeft && (i > 3 || item->alignment() == Qt::AlignLeft);
        }
        return false;
    }

private:
    std::function<QWidget *()> m_area;
};

} // namespace

class tst_LimitArea : public LimitTest
{
    Q_OBJECT
private slots:
    void theAreaHasItsParts();
    void theAreaIsBuiltInOrder();
    void theButtonsHaveTheirRow();
    void thereIsOneDataMeter();
    void buildingTwiceDoublesNothing();
    void switchesHideCaptionsAndMeters_data();
    void switchesHideCaptionsAndMeters();
    void withoutLimitsANoteTakesTheirPlace();
    void theTipNeedsItsSwitch();
    void resettingAsksFirst();
    void settingALimitOpensTheSettings();
    void aNewLanguageReachesTheArea();
    void beforeInitNothingIsShown();
    void theSlotsSignaturesAreFixed();

private:
    [[nodiscard]] static QWidget *area()
    {
        return widget("NetInfoUIPlugin_WidgetVolumeLimit");
    }
    [[nodiscard]] static QString labelText(const char *name)
    {
        return qobject_cast<QLabel *>(widget(name))->text();
    }
    [[nodiscard]] static QPushButton *button(const char *name)
    {
        return qobject_cast<QPushButton *>(widget(name));
    }
};

void tst_LimitArea::theAreaHasItsParts()
{
    start();
    QVERIFY(area());
    QCOMPARE(area()->minimumHeight(), 183);
    QCOMPARE(area()->maximumHeight(), 183);
    QWidget *const left = widget("NetInfoUIPlugin_WidgetLeftAreaParent");
    QCOMPARE(area()->parentWidget(), left);
    QVERIFY(left->layout()->indexOf(area()) > left->layout()->indexOf(tree()));
    QVERIFY(qobject_cast<QVBoxLayout *>(area()->layout()));
    QCOMPARE(area()->layout()->objectName(), QStringLiteral("NetInfoUIPlugin_LayoutVerticalBox"));
    QCOMPARE(labelText(kDataCaption), QStringLiteral("IDS_STA_TOTALVOLUME"));
    QCOMPARE(labelText(kTimeCaption), QStringLiteral("IDC_STA_TIMEVOLUME"));
    QCOMPARE(labelText("NetInfoSettingDlg_TipLabel"), QStringLiteral("IDC_VOLUMENOTES"));
    for (const SkProgressBar *meter : { dataMeter(), timeMeter() }) {
        QVERIFY(meter);
        QCOMPARE(meter->minimumSize(), QSize(228, 20));
        QCOMPARE(meter->maximumSize(), QSize(228, 20));
        QCOMPARE(int(meter->alignment()), int(Qt::AlignHCenter | Qt::AlignVCenter));
    }
    QCOMPARE(widget(kDataMeter), static_cast<QWidget *>(dataMeter()));
    QCOMPARE(widget(kTimeMeter), static_cast<QWidget *>(timeMeter()));
}

void tst_LimitArea::theAreaIsBuiltInOrder()
{
    const AreaWatch watch([] { return area(); });
    start();
    QCOMPARE(watch.names,
             QStringList({ kDataCaption, kDataMeter, kTimeCaption, kTimeMeter,
                           "NetInfoSettingDlg_TipLabel", "NetInfoUIPlugin_LayoutButtonBox" }));
    QVERIFY(watch.allLeft);
}

void tst_LimitArea::theButtonsHaveTheirRow()
{
    start();
    const auto *const row
        = area()->findChild<QHBoxLayout *>(QStringLiteral("NetInfoUIPlugin_LayoutButtonBox"));
    QVERIFY(row);
    QCOMPARE(row->spacing(), 10);
    QPushButton *const reset = button("NetInfoUIPlugin_ButtonResetCounter");
    QPushButton *const setLimit = button("NetInfoUIPlugin_ButtonSetLimit");
    QCOMPARE(row->indexOf(reset), 0);
    QCOMPARE(row->indexOf(setLimit), 1);
    QVERIFY(row->itemAt(2)->spacerItem()); // which keeps them from growing
    QCOMPARE(reset->text(), QStringLiteral("IDS_BTN_RESET"));
    QCOMPARE(setLimit->text(), QStringLiteral("IDC_BTN_SETLIMIT"));
}

void tst_LimitArea::thereIsOneDataMeter()
{
    start();
    int meters = 0;
    const QWidgetList all = QApplication::allWidgets();
    for (const QWidget *one : all)
        meters += one->objectName() == QLatin1String(kDataMeter) ? 1 : 0;
    QCOMPARE(meters, 1);
    QVERIFY(widget("NetInfoSettingDlg_MainWidget")->isAncestorOf(dataMeter()));
    QCOMPARE(timeMeter()->parentWidget(), area());
    QCOMPARE(widget(kDataCaption)->parentWidget(), area());
}

void tst_LimitArea::buildingTwiceDoublesNothing()
{
    CNetInfoUIService *const service = start();
    const int widgets = int(QApplication::allWidgets().size());
    const int parts = area()->layout()->count();
    service->createVolumeLimitWidget();
    service->addDataVolumeWidget();
    QCOMPARE(int(QApplication::allWidgets().size()), widgets);
    QCOMPARE(area()->layout()->count(), parts);
}

void tst_LimitArea::switchesHideCaptionsAndMeters_data()
{
    QTest::addColumn<QStringList>("off");
    QTest::addColumn<bool>("data");
    QTest::addColumn<bool>("time");
    const QString data = QStringLiteral("DATAVOLUMELIMIT");
    const QString time = QStringLiteral("TIMEVOLUMELIMIT");
    QTest::newRow("both") << QStringList() << true << true;
    QTest::newRow("data alone") << QStringList(time) << true << false;
    QTest::newRow("time alone") << QStringList(data) << false << true;
    QTest::newRow("neither") << QStringList({ data, time }) << false << false;
}

void tst_LimitArea::switchesHideCaptionsAndMeters()
{
    QFETCH(QStringList, off);
    QFETCH(bool, data);
    QFETCH(bool, time);
    start(off);
    show();
    widget("NetInfoUIPlugin_WidgetParent")->show();
    report();
    QCOMPARE(widget(kDataCaption)->isVisible(), data);
    QCOMPARE(dataMeter()->isVisible(), data);
    QCOMPARE(widget(kTimeCaption)->isVisible(), time);
    QCOMPARE(timeMeter()->isVisible(), time);
}

void tst_LimitArea::withoutLimitsANoteTakesTheirPlace()
{
    start({ "TIMEVOLUMELIMIT" });
    QVERIFY(!row(QStringLiteral("     IDS_NOTES")));
    CNetInfoUIService::Destroy();
    NetInfoUILogic::Destroy();
    start({ "DATAVOLUMELIMIT" });
    QVERIFY(!row(QStringLiteral("     IDS_NOTES")));
    CNetInfoUIService::Destroy();
    NetInfoUILogic::Destroy();
    start({ "DATAVOLUMELIMIT", "TIMEVOLUMELIMIT" });
    QVERIFY(row(QStringLiteral("     IDS_NOTES")));
}

void tst_LimitArea::theTipNeedsItsSwitch()
{
    start();
    QVERIFY(!widget("NetInfoSettingDlg_TipLabel")->isHidden());
    QVERIFY(qobject_cast<QLabel *>(widget("NetInfoSettingDlg_TipLabel"))->wordWrap());
    CNetInfoUIService::Destroy();
    NetInfoUILogic::Destroy();
    start({ "STATISTICSNOTES" });
    QVERIFY(widget("NetInfoSettingDlg_TipLabel")->isHidden());
}

void tst_LimitArea::resettingAsksFirst()
{
    start();
    QTest::mouseClick(button("NetInfoUIPlugin_ButtonResetCounter"), Qt::LeftButton);
    QCOMPARE(int(fakeHost().messages.size()), 1);
    QCOMPARE(fakeHost().messages.first().text, QStringLiteral("IDS_RESET_QUERY"));
    QVERIFY(fakeSdk().resets.empty());
    fakeHost().messageAnswer = 1024;
    QTest::mouseClick(button("NetInfoUIPlugin_ButtonResetCounter"), Qt::LeftButton);
    QCOMPARE(int(fakeSdk().resets.size()), 1);
}

void tst_LimitArea::settingALimitOpensTheSettings()
{
    CNetInfoUIService *const service = start();
    FakeSettingsPage page;
    service->setSettingsPage(&page);
    show(); // into 10, 20, 500 x 300
    QTest::mouseClick(button("NetInfoUIPlugin_ButtonSetLimit"), Qt::LeftButton);
    QCOMPARE(page.shown, 1);
    QCOMPARE(page.parent.data(), m_window.data());
    QCOMPARE(page.rect, QRect(10, 20, 500, 300));
    QVERIFY(service->IsActiveSetting());
    QWidget other;
    QRect rect(1, 2, 30, 40);
    service->ShowWindow(&other, rect);
    rect = QRect(9, 9, 9, 9); // the host's own
    service->onSetLimitButtonClicked();
    QCOMPARE(page.parent.data(), &other);
    QCOMPARE(page.rect, QRect(1, 2, 30, 40));
    rect = QRect(0, 0, 10, 10);
    service->ShowWindow(m_window.data(), rect);
    service->setSettingsPage(nullptr);
    service->onSetLimitButtonClicked();
    QCOMPARE(page.shown, 2);
}

void tst_LimitArea::aNewLanguageReachesTheArea()
{
    CNetInfoUIService *const service = start();
    const QWidget *const timeMeter = widget("NetInfoUIPlugin_ProgressVolume");
    QCOMPARE(timeMeter->accessibleName(), QStringLiteral("IDC_STA_TIMEVOLUME"));
    fakeHost().language = QStringLiteral(".de");
    service->Notify(320, 0, 0);
    QCOMPARE(timeMeter->accessibleName(), QStringLiteral("IDC_STA_TIMEVOLUME.de"));
    QCOMPARE(labelText(kDataCaption), QStringLiteral("IDS_STA_TOTALVOLUME.de"));
    QCOMPARE(labelText(kTimeCaption), QStringLiteral("IDC_STA_TIMEVOLUME.de"));
    QCOMPARE(labelText("NetInfoSettingDlg_TipLabel"), QStringLiteral("IDC_VOLUMENOTES.de"));
    QCOMPARE(button("NetInfoUIPlugin_ButtonResetCounter")->text(),
             QStringLiteral("IDS_BTN_RESET.de"));
    QCOMPARE(button("NetInfoUIPlugin_ButtonSetLimit")->text(),
             QStringLiteral("IDC_BTN_SETLIMIT.de"));
}

void tst_LimitArea::beforeInitNothingIsShown()
{
    setLimits();
    m_log->takeLines();
    CNetInfoUIService *const service = CNetInfoUIService::instance();
    QCOMPARE(int(m_log->takeLines().filter(QStringLiteral("GetUseLimitSetting")).size()), 2);
    QCOMPARE(service->ShowDataColorPrompt(1e6), 0);
    QCOMPARE(service->ShowTimeColorPrompt(1e6), 0);
    QVERIFY(!service->OperationPersent(1e6));
    QVERIFY(!service->TimeOperationPersent(1e6, 1));
    service->UpdateTreeItems();
    service->UpdateNewPeriodTipInfo();
    service->updateDataVolumeStrings();
    service->onSetLimitButtonClicked();
    service->onNetInfoSettingsChanged(1, 1, true, true);
    m_log->takeLines();
    service->addDataVolumeWidget();
    service->createVolumeLimitWidget();
    const QStringList lines = m_log->takeLines();
    QCOMPARE(int(lines.size()), 2);
    for (const char *name : { "addDataVolumeWidget", "createVolumeLimitWidget" }) {
        const QString line = "Arg is NULL: <time>: " + kSource + ": " + name + ' ';
        QCOMPARE(int(lines.filter(line).size()), 1);
    }
    QVERIFY(!area());
}

void tst_LimitArea::theSlotsSignaturesAreFixed()
{
    for (const char *slot :
         { "onSetLimitButtonClicked()", "onNetInfoSettingsChanged(int,int,bool,bool)" })
        QVERIFY2(CNetInfoUIService::staticMetaObject.indexOfSlot(slot) >= 0, slot);
}

QTEST_MAIN(tst_LimitArea)
#include "tst_limitarea.moc"
