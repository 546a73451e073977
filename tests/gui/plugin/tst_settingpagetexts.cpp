// The settings page's texts in the shipped languages: what is said, cut, and read aloud.

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStyle>
#include <QtTest>

#include "DateEdit.h"
#include "SettingPageTest.h"
#include "ShippedTexts.h"

class tst_SettingPageTexts : public SettingPageTest
{
    Q_OBJECT
private slots:
    void init();
    void everyTextIsTheShippedOne_data();
    void everyTextIsTheShippedOne();
    void textsAreAskedOfTheModule();
    void theNewLanguageIsShown_data();
    void theNewLanguageIsShown();
    void aDateReadsTheSameInBothDirections();
    void aLanguageIsNoChoice_data();
    void aLanguageIsNoChoice();
    void aSwitchedOffRowHasNoTexts();
    void whatIsCutIsInTheToolTip_data();
    void whatIsCutIsInTheToolTip();
    void theLimitsKeepClearOfTheirTitle();
    void nothingOverlaps_data();
    void nothingOverlaps();
    void everyControlHasAName_data();
    void everyControlHasAName();
    void theTabKeyGoesDownThePage_data();
    void theTabKeyGoesDownThePage();

private:
    static void addLanguages();
    //! Switches the texts, and the direction with them, as the host does.
    static void speak(const QString &code);
    //! Labels, check boxes, radio buttons, lists, edits and groups that are shown.
    [[nodiscard]] static QWidgetList controls();
    [[nodiscard]] static QString textOf(const QWidget *widget);
    [[nodiscard]] static QString plain(QString text);
    [[nodiscard]] static QRect place(const QWidget *widget);
    static void comparePageWith(const QHash<QString, QString> &texts);
};

void tst_SettingPageTexts::init()
{
    SettingPageTest::init();
    QFont font = m_font; // the sizes that are fixed are made for a font of this size
    font.setPixelSize(12);
    QApplication::setFont(font);
}

void tst_SettingPageTexts::addLanguages()
{
    QTest::addColumn<QString>("code");
    for (const char *code : { "en", "de", "fr", "es", "ar" })
        QTest::newRow(code) << QString::fromLatin1(code);
}

void tst_SettingPageTexts::speak(const QString &code)
{
    fakeHost().texts = shippedTexts(code);
    QApplication::setLayoutDirection(code == QLatin1String("ar") ? Qt::RightToLeft
                                                                 : Qt::LeftToRight);
}

QWidgetList tst_SettingPageTexts::controls()
{
    QWidgetList all;
    const QList<QWidget *> widgets = page()->findChildren<QWidget *>();
    for (QWidget *one : widgets) {
        const bool isControl = qobject_cast<QLabel *>(one) || qobject_cast<QAbstractButton *>(one)
            || qobject_cast<QComboBox *>(one) || qobject_cast<QDateEdit *>(one)
            || qobject_cast<QGroupBox *>(one)
            || (qobject_cast<QLineEdit *>(one) && one->parentWidget() != date());
        if (isControl && one->isVisible() && one->window() == page()->window())
            all << one;
    }
    return all;
}

QString tst_SettingPageTexts::textOf(const QWidget *widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        return label->text();
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        return button->text();
    if (const auto *group = qobject_cast<const QGroupBox *>(widget))
        return group->title();
    if (const auto *combo = qobject_cast<const QComboBox *>(widget))
        return combo->currentText();
    return QString();
}

QString tst_SettingPageTexts::plain(QString text)
{
    static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
    return text.remove(tag);
}

QRect tst_SettingPageTexts::place(const QWidget *widget)
{
    return QRect(widget->mapTo(page(), QPoint(0, 0)), widget->size());
}

void tst_SettingPageTexts::comparePageWith(const QHash<QString, QString> &texts)
{
    const auto text = [&texts](const char *key) {
        const QString found = texts.value(QLatin1String(key));
        return found.isEmpty() ? QLatin1String("no text for ") + QLatin1String(key) : found;
    };
    QStringList expected;
    for (const char *key :
         { "IDS_GRP_SETPERIOD", "IDS_GRP_RECURRENCE", "IDS_GRP_SETLIMIT", "IDS_GRP_SETWARNINGS",
           "IDS_STA_STARTDATE", "IDS_CHK_SET", "IDS_RADIO_DAILY", "IDC_RADIO_WEEKLY",
           "IDS_RADIO_MONTHLY", "IDS_CHK_VOLUME", "IDS_VOLUME_LIMIT", "IDS_UNIT_DATA_VOLUME_MB",
           "IDS_UNIT_HOURS", "IDS_CHK_BEFORE", "IDS_CHK_AFTER", "IDS_MONDAY" })
        expected << text(key);
    expected << QStringLiteral("<font color='red'>") + text("IDS_STAT_MAX")
            + QStringLiteral("</font>");
    expected << QStringLiteral("1"); // the day
    QStringList shown;
    const QWidgetList all = controls();
    for (const QWidget *one : all) {
        if (!textOf(one).isEmpty())
            shown << textOf(one);
    }
    expected.sort();
    shown.sort();
    QCOMPARE(shown, expected);
    QStringList days;
    for (int i = 0; i < weekday()->count(); ++i)
        days << weekday()->itemText(i);
    QCOMPARE(days,
             QStringList({ text("IDS_SUNDAY"), text("IDS_MONDAY"), text("IDS_TUESDAY"),
                           text("IDS_WEDNESAY"), text("IDS_THURSDAY"), text("IDS_FRIDAY"),
                           text("IDS_SATURDAY") }));
}

void tst_SettingPageTexts::everyTextIsTheShippedOne_data()
{
    addLanguages();
}

void tst_SettingPageTexts::everyTextIsTheShippedOne()
{
    QFETCH(QString, code);
    set(VLS_START_WEEK_DATE, { QStringLiteral("1") });
    speak(code);
    open();
    comparePageWith(shippedTexts(code));
    const QHash<QString, QString> texts = shippedTexts(code);
    for (const char *key : { "IDS_PROPMT", "IDS_OK", "IDS_INPUT_DATA_VOLUME",
                             "IDS_INPUT_TIME_VOLUME_LIMIT", "IDS_SETTING_NAME" })
        QVERIFY2(!texts.value(QLatin1String(key)).isEmpty(), key);
}

void tst_SettingPageTexts::textsAreAskedOfTheModule()
{
    open();
    QCOMPARE(fakeHost().translationContexts, QStringList("NetInfoUIExPlugin"));
    fakeHost().texts.insert(QStringLiteral("IDS_X"), QStringLiteral("a text"));
    QCOMPARE(NetInfoSettingUIPlugin::GetInstance()->tr(QString(QStringLiteral("IDS_X"))),
             QStringLiteral("a text"));
}

void tst_SettingPageTexts::theNewLanguageIsShown_data()
{
    QTest::addColumn<bool>("hidden");
    QTest::newRow("while shown") << false;
    QTest::newRow("while hidden") << true;
}

void tst_SettingPageTexts::theNewLanguageIsShown()
{
    QFETCH(bool, hidden);
    set(VLS_START_WEEK_DATE, { QStringLiteral("1") });
    CNetInfoUIService *const service = open();
    for (const char *code : { "en", "de", "ar", "en" }) {
        if (hidden)
            service->HideSetting();
        speak(QLatin1String(code));
        QCOMPARE(service->Notify(320, 0, 0), 0);
        if (hidden)
            openAgain();
        comparePageWith(shippedTexts(QLatin1String(code)));
        QCOMPARE(date()->accessibleName(),
                 fakeHost().texts.value(QStringLiteral("IDS_STA_STARTDATE")));
        QCOMPARE(page()->isRightToLeft(), QLatin1String("ar") == QLatin1String(code));
    }
}

void tst_SettingPageTexts::aDateReadsTheSameInBothDirections()
{
    set(VLS_START_DATE, { QStringLiteral("05-03-2024") });
    for (const char *code : { "en", "ar" }) {
        speak(QLatin1String(code));
        (void)open();
        QCOMPARE(date()->text(), QStringLiteral("05-03-2024"));
        QCOMPARE(date()->layoutDirection(), Qt::LeftToRight);
        CNetInfoUIService::Destroy();
    }
}

void tst_SettingPageTexts::aLanguageIsNoChoice_data()
{
    QTest::addColumn<QString>("weekdayIndex");
    QTest::newRow("the first day") << "0";
    QTest::newRow("a day") << "3";
    QTest::newRow("the last day") << "6";
}

void tst_SettingPageTexts::aLanguageIsNoChoice()
{
    QFETCH(QString, weekdayIndex);
    set(VLS_RADIO_WEEKLY, { kOn, kOff });
    set(VLS_START_WEEK_DATE, { weekdayIndex, QStringLiteral("5") });
    CNetInfoUIService *const service = open();
    QSignalSpy changed(weekday(), SIGNAL(currentIndexChanged(int)));
    for (const char *code : { "de", "ar", "en" }) {
        speak(QLatin1String(code));
        service->Notify(320, 0, 0);
        QCOMPARE(weekday()->currentIndex(), weekdayIndex.toInt());
        QCOMPARE(weekday()->toolTip(), weekday()->currentText());
        QCOMPARE(day()->currentIndex(), 5);
        QCOMPARE(checkedRadios(), QStringList("weekly"));
        QCOMPARE(enabledParts(), QStringLiteral("radios, weekday"));
    }
    QCOMPARE(int(changed.count()), 0);
    QVERIFY(!weekday()->signalsBlocked());
    const QStringList before = settings();
    QVERIFY(ok());
    QCOMPARE(settings(), before);
}

void tst_SettingPageTexts::aSwitchedOffRowHasNoTexts()
{
    CNetInfoUIService *const service
        = open({ QStringLiteral("DATAVOLUMELIMIT"), QStringLiteral("TIMEVOLUMELIMIT") });
    fakeHost().language = QStringLiteral(".de");
    service->Notify(320, 0, 0);
    QCOMPARE(at<QGroupBox>("groupBoxSetLimit")->title(), QStringLiteral("IDS_GRP_SETLIMIT.de"));
    QCOMPARE(check("WarnBefore")->text(), QStringLiteral("IDS_CHK_BEFORE.de"));
}

void tst_SettingPageTexts::whatIsCutIsInTheToolTip_data()
{
    addLanguages();
}

void tst_SettingPageTexts::whatIsCutIsInTheToolTip()
{
    QFETCH(QString, code);
    speak(code);
    open();
    const QWidgetList all = controls();
    for (QWidget *one : all) {
        const QString text = textOf(one);
        if (text.isEmpty() || qobject_cast<QGroupBox *>(one) || qobject_cast<QComboBox *>(one))
            continue;
        if (one->width() < one->sizeHint().width() || one->height() < one->sizeHint().height())
            QVERIFY2(plain(one->toolTip()) == plain(text), qPrintable(text));
    }
    for (const char *name :
         { "GroupBoxSetPeriod", "GroupBoxRecurrence", "groupBoxSetLimit", "GroupBoxSetWarn" }) {
        const auto *const group = at<QGroupBox>(name);
        QVERIFY2(group->fontMetrics().size(0, group->title()).width() <= group->width() - 16, name);
    }
    for (QComboBox *combo : { weekday(), day() }) {
        for (int i = 0; i < combo->count(); ++i) {
            combo->setCurrentIndex(i);
            QStyleOptionComboBox option;
            option.initFrom(combo);
            const QRect field = combo->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                               QStyle::SC_ComboBoxEditField, combo);
            const QSize text = combo->fontMetrics().size(0, combo->currentText());
            if (!field.contains(QRect(field.topLeft(), text)))
                QCOMPARE(combo->toolTip(), combo->currentText());
        }
    }
    QVERIFY(weekday()->view()->minimumWidth() >= weekday()->view()->sizeHintForColumn(0));
}

void tst_SettingPageTexts::theLimitsKeepClearOfTheirTitle()
{
    const auto isClear = [] {
        QCoreApplication::processEvents();
        const auto *const group = at<QGroupBox>("groupBoxSetLimit");
        const int title = group->fontMetrics().height();
        return group->contentsMargins().isNull() && check("DataVolume")->y() >= title
            && size("Data")->y() >= title && check("TimeVolume")->geometry().bottom() < 65
            && size("Time")->geometry().bottom() < 65;
    };
    CNetInfoUIService *const service = open();
    QVERIFY(isClear());
    for (const char *code : { "de", "ar", "en", "en" }) {
        speak(QLatin1String(code));
        service->Notify(320, 0, 0);
        QVERIFY2(isClear(), code);
    }
    QFont font = QApplication::font();
    font.setPixelSize(11);
    at<QGroupBox>("groupBoxSetLimit")->setFont(font);
    QVERIFY(isClear());
    QEvent newStyle(QEvent::StyleChange);
    QApplication::sendEvent(at<QGroupBox>("groupBoxSetLimit"), &newStyle);
    QVERIFY(isClear());
}

void tst_SettingPageTexts::nothingOverlaps_data()
{
    addLanguages();
}

void tst_SettingPageTexts::nothingOverlaps()
{
    QFETCH(QString, code);
    speak(code);
    open();
    const QWidgetList all = controls();
    QCOMPARE(int(all.size()), 25);
    for (int i = 0; i < all.size(); ++i) {
        QWidget *const one = all.at(i);
        const QByteArray name
            = one->metaObject()->className() + QByteArray(" ") + one->objectName().toLatin1();
        QVERIFY2(page()->rect().contains(place(one)), name.constData());
        if (qobject_cast<QGroupBox *>(one))
            continue; // its size is fixed, whatever the font
        const QSize seen = one->visibleRegion().boundingRect().size();
        QVERIFY2(seen == one->size(), name.constData());
        for (int j = 0; j < i; ++j) {
            const QWidget *const other = all.at(j);
            if (!qobject_cast<const QGroupBox *>(other))
                QVERIFY2(!place(one).intersects(place(other)),
                         (name + " over " + qPrintable(textOf(other))).constData());
        }
    }
}

void tst_SettingPageTexts::everyControlHasAName_data()
{
    addLanguages();
}

void tst_SettingPageTexts::everyControlHasAName()
{
    QFETCH(QString, code);
    speak(code);
    set(VLS_CHK_VOLUME, { kOn, kOn });
    open();
    QStringList names;
    int focusable = 0;
    const QList<QWidget *> widgets = page()->findChildren<QWidget *>();
    for (QWidget *one : widgets) {
        if (one->focusPolicy() == Qt::NoFocus || one->focusProxy() || !one->isVisible())
            continue;
        ++focusable;
        QAccessibleInterface *const accessible = QAccessible::queryAccessibleInterface(one);
        const QString name = accessible->text(QAccessible::Name);
        QVERIFY2(!name.isEmpty(), qPrintable(one->objectName()));
        QVERIFY2(!name.contains(QLatin1String("ID")), qPrintable(name));
        names << name;
    }
    QCOMPARE(focusable, 13);
    names.removeDuplicates();
    QCOMPARE(int(names.size()), 13);
    // Of a list Qt tells what is chosen as its name, and this where the platform asks for it.
    QCOMPARE(weekday()->accessibleName(),
             fakeHost().texts.value(QStringLiteral("IDC_RADIO_WEEKLY")));
    QCOMPARE(day()->accessibleName(), fakeHost().texts.value(QStringLiteral("IDS_RADIO_MONTHLY")));
}

void tst_SettingPageTexts::theTabKeyGoesDownThePage_data()
{
    QTest::addColumn<QStringList>("off");
    QTest::newRow("both limits") << QStringList();
    QTest::newRow("data alone") << QStringList(QStringLiteral("TIMEVOLUMELIMIT"));
    QTest::newRow("time alone") << QStringList(QStringLiteral("DATAVOLUMELIMIT"));
}

void tst_SettingPageTexts::theTabKeyGoesDownThePage()
{
    QFETCH(QStringList, off);
    open(off);
    const QList<QWidget *> widgets = page()->findChildren<QWidget *>();
    for (QWidget *one : widgets)
        one->setEnabled(true);
    for (const char *name : { "Daily", "Weekly", "Monthly" })
        radio(name)->setAutoExclusive(false); // else the tab key visits the checked one alone
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    QStringList expected
        = { "dateedit",           "dateeditSetDate",    "radioDaily",         "radioWeekly",
            "comboBoxWeekly",     "radioMonthly",       "comboBoxMonthly",    "checkBoxDataVolume",
            "lineEditDataVolume", "checkBoxTimeVolume", "lineEditTimeVolume", "checkBoxWarnBefore",
            "checkBoxWarnExceed" };
    for (const QString &feature : off) {
        const bool isTime = feature.startsWith(QLatin1String("TIME"));
        expected.removeAll(QLatin1String(isTime ? "checkBoxTimeVolume" : "checkBoxDataVolume"));
        expected.removeAll(QLatin1String(isTime ? "lineEditTimeVolume" : "lineEditDataVolume"));
    }
    date()->setFocus();
    QStringList visited;
    for (int i = 0; i < expected.size(); ++i) {
        visited << m_window->focusWidget()->objectName().mid(18);
        QTest::keyClick(m_window->focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(visited, expected);
}

QTEST_MAIN(tst_SettingPageTexts)
#include "tst_settingpagetexts.moc"
