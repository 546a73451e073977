#pragma once
// A random walk over the operator page and the settings page together: what a person and the host
// can do, in any order, each step told to the model too.

#include <QPointer>
#include <QRect>
#include <QTemporaryDir>

#include <random>

#include "PluginTest.h"
#include "SettingModel.h"

class SettingWalk : public PluginTest
{
    Q_OBJECT
protected:
    //! Begins with a new controller, hosts and an empty user data folder.
    void begin();
    void end();
    void seed(unsigned int number);
    //! One random step.
    void takeStep();
    //! What is not as the model says; empty when all is.
    [[nodiscard]] QString problem();
    //! The last steps, a line each.
    [[nodiscard]] QString history() const;

    // How often OK and Save stored what was entered, how often not, and how many pages died.
    int m_saved = 0;
    int m_refused = 0;
    int m_died = 0;

private:
    struct Action
    {
        int weight;
        void (SettingWalk::*run)();
    };

    // What a person does.
    void clickControl();
    void pressKey();
    void typeSize();
    void chooseFromList();
    void chooseDate();
    void pressOk();
    void pressCancel();
    void pressSave();
    void pressClear();
    void pressSetLimit();
    // What the host and the rest of the program do.
    void changeLanguage();
    void showOperatorPage();
    void showSettingsPage();
    void hidePages();
    void deleteHost();
    void initialise();
    void renewController();
    void storeElsewhere();
    void reportStatistics();
    void runEvents();

    void note(const QString &text);
    [[nodiscard]] int below(int bound);
    [[nodiscard]] QRect anyRect();
    [[nodiscard]] QWidget *page(SettingModel::Page which) const;
    [[nodiscard]] QWidget *control(SettingModel::Page which, const QString &name) const;
    //! A control of either page whose name begins with one of \a prefixes; false when there is
    //! none.
    [[nodiscard]] bool pickControl(const QStringList &prefixes);
    [[nodiscard]] SettingModel::Controls shown(SettingModel::Page which) const;
    void arrowOnRadio(int key);
    void dropHost(int host);
    void destroyController();
    void planMessage();
    [[nodiscard]] QString userFile() const;
    [[nodiscard]] QString pageProblem() const;

    static constexpr int kHosts = 2;
    static constexpr int kNowhere = -1;
    static const QList<Action> kActions;

    std::mt19937 m_random;
    QScopedPointer<SettingModel> m_model;
    QScopedPointer<QTemporaryDir> m_user;
    QScopedPointer<QWidget> m_hosts[kHosts];
    int m_place[SettingModel::PageCount] = { kNowhere, kNowhere };
    bool m_isActive = false; // whether the host has a settings page open
    bool m_isDestroyed = false; // the controller, by what ran during a message
    int m_messages = 0; // that the last step must have shown
    QStringList m_history;
    QString m_wrong; // found within a step
    // What pickControl() found.
    SettingModel::Page m_page = SettingModel::Operator;
    QString m_name;
    QPointer<QWidget> m_control;
};
