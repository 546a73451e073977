// The controller as the host's settings dialog drives it, with a settings page of the test's own.

#include "NetInfoUIService.h"

#include <QtTest>

#include <functional>

#include "NetInfoSettingsPage.h"
#include "PluginTest.h"

namespace {

class FakeSettingsPage : public NetInfoSettingsPage
{
public:
    void ShowNetInfoSettingDlg(QWidget *parent, QRect &rect) override
    {
        page.setParent(parent);
        page.setGeometry(rect);
        page.show();
    }
    bool HideNetInfoSetting() override
    {
        page.hide();
        return hideResult;
    }
    bool SaveNetInfoSettings() override
    {
        ++saves;
        if (duringSave)
            duringSave();
        return saveResult;
    }
    void CancelNetInfoSetting() override
    {
        ++cancels;
    }
    void SetLanguage() override
    {
        ++languages;
    }
    QWidget *pageWidget() const override
    {
        return const_cast<QWidget *>(&page);
    }

    QWidget page;
    bool saveResult = true;
    std::function<void()> duringSave;
    bool hideResult = true;
    int saves = 0;
    int cancels = 0;
    int languages = 0;
};

} // namespace

class tst_SettingsPage : public PluginTest
{
    Q_OBJECT
private slots:
    void settingsWithoutAPageAreHarmless();
    void settingsArePassedToThePage();
    void aFailedSaveKeepsTheDialogActive();
    void theHostMayDestroyWhileSaving();
    void cancelDetachesThePage();
    void thePageFollowsTheLanguage();
};

void tst_SettingsPage::settingsWithoutAPageAreHarmless()
{
    CNetInfoUIService *const service = start();
    service->setSettingsPage(nullptr);
    QRect rect(0, 0, 10, 10);
    QVERIFY(service->ShowSettingDialog(m_window.data(), rect));
    QVERIFY(!service->IsActiveSetting());
    QVERIFY(service->HideSetting());
    QVERIFY(service->OnClickSettingOkButton());
    QVERIFY(service->OnClickSettingCancelButton());
}

void tst_SettingsPage::settingsArePassedToThePage()
{
    CNetInfoUIService *const service = start();
    FakeSettingsPage settings;
    service->setSettingsPage(&settings);
    QRect rect(1, 2, 30, 40);
    QVERIFY(service->ShowSettingDialog(m_window.data(), rect));
    QVERIFY(service->IsActiveSetting());
    QCOMPARE(settings.page.parentWidget(), m_window.data());
    QCOMPARE(settings.page.geometry(), rect);
    settings.hideResult = false;
    QVERIFY(!service->HideSetting());
    settings.hideResult = true;
    QVERIFY(service->HideSetting());
    QVERIFY(service->OnClickSettingOkButton());
    QCOMPARE(settings.saves, 1);
    QVERIFY(!service->IsActiveSetting());
    QVERIFY(!settings.page.parentWidget());
    service->setSettingsPage(nullptr);
}

void tst_SettingsPage::aFailedSaveKeepsTheDialogActive()
{
    CNetInfoUIService *const service = start();
    FakeSettingsPage settings;
    settings.saveResult = false;
    service->setSettingsPage(&settings);
    QRect rect(0, 0, 10, 10);
    service->ShowSettingDialog(m_window.data(), rect);
    QVERIFY(!service->OnClickSettingOkButton());
    QVERIFY(service->IsActiveSetting());
    QCOMPARE(settings.page.parentWidget(), m_window.data());
    settings.page.setParent(nullptr);
    service->setSettingsPage(nullptr);
}

void tst_SettingsPage::theHostMayDestroyWhileSaving()
{
    for (const bool saved : { false, true }) {
        CNetInfoUIService *const service = start();
        FakeSettingsPage settings;
        settings.saveResult = saved;
        settings.duringSave = [] { CNetInfoUIService::Destroy(); };
        service->setSettingsPage(&settings);
        QCOMPARE(service->OnClickSettingOkButton(), saved);
        QVERIFY(!tree());
    }
}

void tst_SettingsPage::cancelDetachesThePage()
{
    CNetInfoUIService *const service = start();
    FakeSettingsPage settings;
    service->setSettingsPage(&settings);
    QRect rect(0, 0, 10, 10);
    service->ShowSettingDialog(m_window.data(), rect);
    QVERIFY(service->OnClickSettingCancelButton());
    QCOMPARE(settings.cancels, 1);
    QCOMPARE(settings.saves, 0);
    QVERIFY(!service->IsActiveSetting());
    QVERIFY(!settings.page.parentWidget());
    service->setSettingsPage(nullptr);
}

void tst_SettingsPage::thePageFollowsTheLanguage()
{
    CNetInfoUIService *const service = start();
    FakeSettingsPage settings;
    service->setSettingsPage(&settings);
    service->Notify(837, 0, 0);
    QCOMPARE(settings.languages, 0);
    service->Notify(320, 0, 0);
    QCOMPARE(settings.languages, 1);
}

QTEST_MAIN(tst_SettingsPage)
#include "tst_settingspage.moc"
