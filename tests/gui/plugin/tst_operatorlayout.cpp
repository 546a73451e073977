// The operator page in narrow and wide rectangles, with short and long texts, in both directions.

#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QtTest>

#include "NetInfoOperatorPage.h"
#include "NetInfoSettingUILogic.h"
#include "OperatorPageTest.h"
#include "SkProgressBar.h"

class tst_OperatorLayout : public OperatorPageTest
{
    Q_OBJECT
private slots:
    void everythingHasItsPlace_data();
    void everythingHasItsPlace();
    void columnsStandSideBySideWhereTheyFit_data();
    void columnsStandSideBySideWhereTheyFit();
    void aLanguageMayTurnTheColumns();
    void aFontMayTurnTheColumns();
    void theScrollBarDoesNotTurnTheColumns();
    void theKeyboardScrollsToWhatHasTheFocus();
    void theMarginsAreTheHosts();
    void moreRoomMovesNothing();
    void stackedButtonsKeepTheirWidth();
    void aFrameNeedsNoColumns();

private:
    //! Places the page into a rectangle of \a size of a window a bit larger.
    void showIn(const QSize &size);
    [[nodiscard]] static QWidgetList controls();
    //! Of \a control in the content's coordinates.
    [[nodiscard]] static QRect place(const QWidget *control);
    //! Moves the scroll bars, as far as they go, until the corner of \a control is at the
    //! viewport's.
    static void scrollTo(const QWidget *control);
    [[nodiscard]] static bool isSideBySide();
    //! What both columns need side by side.
    [[nodiscard]] static int columnsWidth();
};

void tst_OperatorLayout::showIn(const QSize &size)
{
    m_window->resize(size + QSize(40, 40));
    m_window->show();
    QRect rect(QPoint(5, 6), size);
    CNetInfoUIService::instance()->ShowWindow(m_window.data(), rect);
    m_log->dropLines();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
    QCoreApplication::processEvents(); // layouts are done at once, before painting
}

QWidgetList tst_OperatorLayout::controls()
{
    QWidgetList all;
    const auto children = content()->findChildren<QWidget *>();
    for (QWidget *one : children) {
        const bool isControl = qobject_cast<QLabel *>(one) || qobject_cast<QAbstractButton *>(one)
            || qobject_cast<QLineEdit *>(one) || qobject_cast<QComboBox *>(one)
            || qobject_cast<SkProgressBar *>(one);
        if (isControl && one->isVisible() && one->window() == page()->window())
            all << one;
    }
    return all;
}

QRect tst_OperatorLayout::place(const QWidget *control)
{
    return QRect(control->mapTo(content(), QPoint(0, 0)), control->size());
}

void tst_OperatorLayout::scrollTo(const QWidget *control)
{
    QScrollBar *const across = page()->horizontalScrollBar();
    const int left = qMin(place(control).left(), across->maximum());
    across->setValue(page()->isRightToLeft() ? across->maximum() - left : left);
    page()->verticalScrollBar()->setValue(place(control).top());
}

bool tst_OperatorLayout::isSideBySide()
{
    const QWidget *const recurrence = widget("NetInfoSettingDlg_GroupBoxRecurrence");
    const QWidget *const limit = widget("NetInfoSettingDlg_groupBoxSetLimit");
    return place(limit).top() < place(recurrence).bottom();
}

int tst_OperatorLayout::columnsWidth()
{
    const QLayout *const columns = content()->layout()->itemAt(2)->widget()->layout();
    return columns->itemAt(0)->minimumSize().width() + columns->spacing()
        + columns->itemAt(1)->minimumSize().width();
}

void tst_OperatorLayout::everythingHasItsPlace_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<bool>("rightToLeft");
    QTest::addColumn<bool>("narrowFont");
    for (const QSize &size : { QSize(300, 200), QSize(420, 300), QSize(900, 600) }) {
        for (const bool rightToLeft : { false, true }) {
            const auto add = [&](const char *texts, const QString &suffix, bool narrow) {
                QTest::addRow("%d x %d %s %s", size.width(), size.height(), texts,
                              rightToLeft ? "right to left" : "left to right")
                    << size << suffix << rightToLeft << narrow;
            };
            add("short", QString(), true);
            add("middle", QString(), false);
            add("long", QStringLiteral(" and some words that make it long"), false);
        }
    }
}

void tst_OperatorLayout::everythingHasItsPlace()
{
    QFETCH(QSize, size);
    QFETCH(QString, suffix);
    QFETCH(bool, rightToLeft);
    QFETCH(bool, narrowFont);
    if (narrowFont)
        useNarrowFont();
    QApplication::setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    fakeHost().language = suffix;
    start();
    showIn(size);
    const QWidgetList all = controls();
    QCOMPARE(int(all.size()),
             12); // caption, meter, 3 radios, 2 combos, switch, size, unit, 2 buttons
    for (int i = 0; i < all.size(); ++i) {
        const QWidget *const one = all.at(i);
        const QByteArray name
            = one->metaObject()->className() + QByteArray(" ") + one->objectName().toLatin1();
        QVERIFY2(content()->rect().contains(place(one)), name.constData());
        QVERIFY2(one->parentWidget()->rect().contains(one->geometry()), name.constData());
        for (int j = 0; j < i; ++j) {
            const QByteArray pair = name + " over " + all.at(j)->objectName().toLatin1();
            QVERIFY2(!place(one).intersects(place(all.at(j))), pair.constData());
        }
    }
    for (const QWidget *one : all) {
        scrollTo(one);
        const QRect seen = place(one).translated(content()->pos()) & page()->viewport()->rect();
        const QSize whole = one->size().boundedTo(page()->viewport()->size());
        QVERIFY2(seen.size() == whole, qPrintable(one->objectName()));
    }
    QCOMPARE(isSideBySide(),
             columnsWidth() <= size.width() - page()->verticalScrollBar()->sizeHint().width());
}

void tst_OperatorLayout::columnsStandSideBySideWhereTheyFit_data()
{
    QTest::addColumn<int>("spare"); // pixels beyond what the columns and a scroll bar need
    QTest::addColumn<bool>("sideBySide");
    QTest::newRow("room to spare") << 100 << true;
    QTest::newRow("just enough") << 0 << true;
    QTest::newRow("a pixel too few") << -1 << false;
    QTest::newRow("far too few") << -100 << false;
}

void tst_OperatorLayout::columnsStandSideBySideWhereTheyFit()
{
    QFETCH(int, spare);
    QFETCH(bool, sideBySide);
    start();
    showIn(QSize(900, 600));
    const int needed = columnsWidth() + page()->verticalScrollBar()->sizeHint().width();
    for (const Qt::LayoutDirection direction : { Qt::LeftToRight, Qt::RightToLeft }) {
        QApplication::setLayoutDirection(direction);
        showIn(QSize(needed + spare, 600));
        QCOMPARE(isSideBySide(), sideBySide);
        const int left = place(widget("NetInfoSettingDlg_GroupBoxRecurrence")).left();
        const int right = place(widget("NetInfoSettingDlg_groupBoxSetLimit")).left();
        if (sideBySide)
            QCOMPARE(left < right, direction == Qt::LeftToRight);
        QCOMPARE(page()->horizontalScrollBar()->maximum(), 0);
        QCOMPARE(page()->verticalScrollBar()->maximum(), 0);
    }
}

void tst_OperatorLayout::aLanguageMayTurnTheColumns()
{
    CNetInfoUIService *const service = start();
    const auto speak = [service](const char *suffix) {
        fakeHost().language = QLatin1String(suffix);
        service->Notify(320, 0, 0);
    };
    const char *const languages[] = { "", " in a longer language" };
    int widths[2];
    showIn(QSize(1200, 600));
    for (int i = 0; i < 2; ++i) {
        speak(languages[i]);
        QCoreApplication::processEvents();
        widths[i] = columnsWidth() + page()->verticalScrollBar()->sizeHint().width();
    }
    QVERIFY(widths[0] < widths[1]);
    for (const int width : { widths[0], (widths[0] + widths[1]) / 2, widths[1] - 1 }) {
        showIn(QSize(width, 600)); // the longer texts stand in columns one below the other
        for (int turn = 0; turn < 4; ++turn) {
            speak(languages[turn % 2]);
            QTRY_COMPARE(isSideBySide(), turn % 2 == 0);
        }
    }
}

void tst_OperatorLayout::aFontMayTurnTheColumns()
{
    start();
    showIn(QSize(900, 600));
    showIn(QSize(columnsWidth() + page()->verticalScrollBar()->sizeHint().width(), 600));
    QVERIFY(isSideBySide());
    QFont large = QApplication::font();
    large.setPixelSize(40);
    QApplication::setFont(large);
    QTRY_VERIFY(!isSideBySide());
    useNarrowFont();
    QTRY_VERIFY(isSideBySide());
}

void tst_OperatorLayout::theScrollBarDoesNotTurnTheColumns()
{
    start();
    showIn(QSize(900, 600));
    const int needed = columnsWidth() + page()->verticalScrollBar()->sizeHint().width();
    for (const int height : { 600, 100 }) {
        showIn(QSize(needed, height));
        QVERIFY(isSideBySide());
        QCOMPARE(page()->verticalScrollBar()->isVisible(), height == 100);
        QCOMPARE(page()->horizontalScrollBar()->maximum(), 0);
    }
}

void tst_OperatorLayout::theKeyboardScrollsToWhatHasTheFocus()
{
    set(VLS_CHK_VOLUME, { QStringLiteral("true") });
    start();
    showIn(QSize(240, 100));
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    widget("NetInfoSettingDlg_radioMonthly")->setFocus();
    QWidgetList visited;
    for (int tab = 0; tab < 6; ++tab) {
        QTest::keyClick(m_window->focusWidget(), Qt::Key_Tab);
        QWidget *const one = m_window->focusWidget();
        if (!content()->isAncestorOf(one))
            continue; // in the normal page, which is hidden, there is none
        visited << one;
        const QRect seen = place(one).translated(content()->pos()) & page()->viewport()->rect();
        QVERIFY2(seen.height() == one->height(), qPrintable(one->objectName()));
    }
    QVERIFY(visited.contains(day()));
    QVERIFY(visited.contains(dataSwitch()));
    QVERIFY(visited.contains(dataSize()));
    QVERIFY(!visited.contains(page()));
}

void tst_OperatorLayout::theMarginsAreTheHosts()
{
    start();
    showIn(QSize(420, 300));
    QCOMPARE(page()->geometry(), QRect(5, 6, 420, 300));
    QCOMPARE(page()->viewport()->geometry().topLeft(), QPoint(0, 0)); // no frame
    QCOMPARE(page()->focusPolicy(), Qt::NoFocus);
    QVERIFY(!page()->viewport()->autoFillBackground()); // the host's background shows through
    QCOMPARE(place(widget("NetInfoSettingDlg_GroupBoxRecurrence")).left(), 0);
}

void tst_OperatorLayout::moreRoomMovesNothing()
{
    const auto places = [] {
        QList<QRect> all;
        const QWidgetList shown = controls();
        for (const QWidget *one : shown) {
            if (!qobject_cast<const QLabel *>(one)) // the caption takes the row
                all << place(one);
        }
        return all;
    };
    start();
    showIn(QSize(900, 600));
    showIn(QSize(columnsWidth() + page()->verticalScrollBar()->sizeHint().width(), 600));
    page()->resize(page()->width(), content()->minimumSizeHint().height());
    QTRY_COMPARE(page()->verticalScrollBar()->maximum(), 0);
    const QList<QRect> compact = places();
    showIn(QSize(900, 600));
    QCOMPARE(places(), compact);
    const int left = place(widget("NetInfoSettingDlg_groupBoxSetLimit")).left();
    QCOMPARE(place(widget("NetInfoSettingDlg_savesettingbutton")).left(), left);
    QCOMPARE(place(widget("NetInfoSettingDlg_groupBoxSetLimit")).top(),
             place(widget("NetInfoSettingDlg_GroupBoxRecurrence")).top());
}

void tst_OperatorLayout::stackedButtonsKeepTheirWidth()
{
    start();
    showIn(QSize(900, 600));
    showIn(QSize(columnsWidth() - 1, 600));
    QVERIFY(!isSideBySide());
    for (const char *name :
         { "NetInfoSettingDlg_savesettingbutton", "NetInfoSettingDlg_clearhistorybutton" })
        QCOMPARE(widget(name)->width(), widget(name)->sizeHint().width());
    const int bottom = place(widget("NetInfoSettingDlg_GroupBoxRecurrence")).bottom();
    const QLayout *const columns = content()->layout()->itemAt(2)->widget()->layout();
    QCOMPARE(place(widget("NetInfoSettingDlg_groupBoxSetLimit")).top() - 1 - bottom,
             columns->spacing());
}

void tst_OperatorLayout::aFrameNeedsNoColumns()
{
    NetInfoOperatorPage frame;
    frame.resize(50, 50);
    frame.show();
    frame.resize(60, 50);
    frame.hide();
    QWidget *const widget = new QWidget;
    auto *const columns = new QHBoxLayout(widget);
    columns->addWidget(new QPushButton(QStringLiteral("A"), widget));
    columns->addWidget(new QPushButton(QStringLiteral("B"), widget));
    frame.setWidget(widget);
    frame.setColumns(columns);
    QCOMPARE(columns->direction(), QBoxLayout::TopToBottom); // at once
    frame.show();
    frame.resize(500, 50);
    QTRY_COMPARE(columns->direction(), QBoxLayout::LeftToRight);
    QCoreApplication::processEvents();
    frame.resize(520, 50); // turns nothing
    QCOMPARE(widget->width(), frame.viewport()->width());
    delete frame.takeWidget();
    frame.resize(60, 50);
    QCoreApplication::processEvents();
    QVERIFY(!frame.widget());
}

QTEST_MAIN(tst_OperatorLayout)
#include "tst_operatorlayout.moc"
