// What a person does on the pages.
#include "SettingWalk.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDateEdit>
#include <QMouseEvent>
#include <QTest>

namespace {

constexpr int kAffirmative = 1024;

//! Where a check box and a radio button have their mark, and a date editor has none.
QPoint markOf(const QWidget *widget)
{
    constexpr int kInset = 8;
    return QPoint(widget->isRightToLeft() ? widget->width() - kInset : kInset,
                  widget->height() / 2);
}

//! Like QTest's, which has a remark for each event that a disabled widget does not take.
void clickQuietly(QWidget *widget, const QPoint &position)
{
    for (const QEvent::Type type : { QEvent::MouseButtonPress, QEvent::MouseButtonRelease }) {
        QMouseEvent event(type, position, widget->mapToGlobal(position), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    }
}

} // namespace

bool SettingWalk::pickControl(const QStringList &prefixes)
{
    m_page = below(2) == 0 ? SettingModel::Operator : SettingModel::Settings;
    QStringList names;
    const QStringList all = m_model->controls(m_page).keys();
    for (const QString &name : all) {
        for (const QString &prefix : prefixes) {
            if (name.startsWith(prefix))
                names << name;
        }
    }
    if (names.isEmpty())
        return false;
    m_name = names.at(below(int(names.size())));
    m_control = control(m_page, m_name);
    return m_control;
}

void SettingWalk::clickControl()
{
    if (!pickControl({ QString() }))
        return;
    note(QStringLiteral("click %1 on page %2").arg(m_name).arg(m_page));
    if (qobject_cast<QComboBox *>(m_control) && m_control->isEnabled())
        return; // chooseFromList() does that
    const QPoint mark = markOf(m_control);
    QWidget *const part = m_control->childAt(mark); // a date editor's line edit
    if (!m_control->isEnabled())
        clickQuietly(m_control, mark);
    else if (part)
        QTest::mouseClick(part, Qt::LeftButton, Qt::NoModifier, part->mapFrom(m_control, mark));
    else
        QTest::mouseClick(m_control, Qt::LeftButton, Qt::NoModifier, mark);
    m_model->click(m_page, m_name);
}

void SettingWalk::pressKey()
{
    static const QList<int> kKeys
        = { Qt::Key_Space, Qt::Key_Up,     Qt::Key_Down,     Qt::Key_Home, Qt::Key_End,
            Qt::Key_Tab,   Qt::Key_Escape, Qt::Key_PageDown, Qt::Key_1,    Qt::Key_Return };
    if (!pickControl({ QString() }) || !m_control->isEnabled())
        return;
    const int key = kKeys.at(below(int(kKeys.size())));
    note(QStringLiteral("key %1 in %2 on page %3").arg(key, 0, 16).arg(m_name).arg(m_page));
    const bool isArrow = key == Qt::Key_Up || key == Qt::Key_Down;
    const int entry = m_model->controls(m_page).value(m_name).value.toInt();
    if (m_name.startsWith(QLatin1String("radio")) && isArrow) {
        arrowOnRadio(key);
    } else if (m_name.startsWith(QLatin1String("comboBox"))) {
        const int last = SettingModel::entries(m_page, m_name) - 1;
        const QMap<int, int> entries = { { Qt::Key_Up, entry - 1 },
                                         { Qt::Key_Down, entry + 1 },
                                         { Qt::Key_Home, 0 },
                                         { Qt::Key_End, last } };
        if (!entries.contains(key))
            return;
        QTest::keyClick(m_control, Qt::Key(key));
        m_model->choose(m_page, m_name, entries.value(key));
    } else if (!m_name.startsWith(QLatin1String("lineEdit")) || key != Qt::Key_1) {
        QTest::keyClick(m_control, Qt::Key(key)); // in the date editor none has an effect
        if (key == Qt::Key_Space && qobject_cast<QAbstractButton *>(m_control))
            m_model->click(m_page, m_name);
    }
}

//! Which button an arrow leads to is the toolkit's business; that it is chosen then is the page's.
void SettingWalk::arrowOnRadio(int key)
{
    const SettingModel::Controls before = shown(m_page);
    m_control->setFocus();
    QTest::keyClick(m_control, Qt::Key(key));
    const SettingModel::Controls after = shown(m_page);
    for (auto it = after.begin(); it != after.end(); ++it) {
        if (it.key().startsWith(QLatin1String("radio")) && it->value == QLatin1String("on")
            && before.value(it.key()).value == QLatin1String("off"))
            m_model->click(m_page, it.key());
    }
}

void SettingWalk::typeSize()
{
    if (!pickControl({ QStringLiteral("lineEdit") }) || !m_control->isEnabled())
        return;
    const QString text = m_model->controls(m_page).value(m_name).value;
    const char digit = char('0' + below(10));
    const QChar asText = QLatin1Char(digit);
    const int way = below(7);
    note(QStringLiteral("type %1 in way %2 in %3 on page %4")
             .arg(asText)
             .arg(way)
             .arg(m_name)
             .arg(m_page));
    if (way == 4 || way == 5)
        QTest::keyClick(m_control, Qt::Key_A, Qt::ControlModifier);
    else
        QTest::keyClick(m_control, way == 1 || way == 3 ? Qt::Key_Home : Qt::Key_End);
    if (way == 6) {
        QTest::keyClicks(m_control, QStringLiteral("-a.e+ "));
    } else if (way == 0 || way == 1 || way == 4) {
        QTest::keyClick(m_control, digit);
    } else {
        QTest::keyClick(m_control, way == 2 ? Qt::Key_Backspace : Qt::Key_Delete);
    }
    const QString results[]
        = { text + asText, asText + text, text.left(int(text.size()) - 1), text.mid(1), asText,
            QString(),     text };
    m_model->type(m_page, m_name, results[way]);
}

void SettingWalk::chooseFromList()
{
    if (!pickControl({ QStringLiteral("comboBox") }) || !m_control->isEnabled())
        return;
    auto *const combo = qobject_cast<QComboBox *>(m_control);
    const int entry = below(combo->count());
    note(QStringLiteral("choose %1 in %2 on page %3").arg(entry).arg(m_name).arg(m_page));
    if (combo->isVisible() && below(3) == 0) {
        combo->showPopup();
        if (below(4) == 0)
            return; // it stays open while other things happen
        combo->view()->setCurrentIndex(combo->model()->index(entry, 0));
        QTest::keyClick(combo->view(), Qt::Key_Return);
    } else {
        combo->setCurrentIndex(entry);
    }
    m_model->choose(m_page, m_name, entry);
}

void SettingWalk::chooseDate()
{
    auto *const edit
        = qobject_cast<QDateEdit *>(control(SettingModel::Settings, QStringLiteral("dateedit")));
    if (!edit || !edit->isEnabled())
        return;
    const QDate date = QDate(2020, 1, 1).addDays(below(4000));
    const bool isByCalendar = edit->isVisible() && below(3) == 0;
    note((isByCalendar ? QStringLiteral("calendar ") : QStringLiteral("date "))
         + date.toString(Qt::ISODate));
    if (isByCalendar) {
        const QPoint arrow(edit->isRightToLeft() ? 6 : edit->width() - 6, edit->height() / 2);
        QTest::mouseClick(edit, Qt::LeftButton, Qt::NoModifier, arrow);
        QCalendarWidget *const calendar = edit->calendarWidget();
        calendar->setSelectedDate(date);
        QWidget *const days
            = calendar->findChild<QWidget *>(QStringLiteral("qt_calendar_calendarview"));
        QTest::keyClick(days, Qt::Key_Return);
    } else {
        edit->setDate(date);
    }
    m_model->chooseDate(date);
}

//! While the next message is open the host may do as it likes.
void SettingWalk::planMessage()
{
    const int plan = below(12);
    fakeHost().duringMessage = [this, plan] {
        if (plan == 0)
            destroyController();
        else if (plan < 1 + kHosts)
            dropHost(plan - 1);
    };
}

void SettingWalk::pressOk()
{
    planMessage();
    const bool hasPage = !m_model->controls(SettingModel::Settings).isEmpty();
    const bool expected = m_model->save(SettingModel::Settings);
    ++(expected ? m_saved : m_refused);
    note(QStringLiteral("OK, expected %1").arg(expected));
    m_messages = hasPage && !expected ? 1 : 0;
    if (CNetInfoUIService::instance()->OnClickSettingOkButton() != expected)
        m_wrong = QStringLiteral("OK answered %1").arg(!expected);
    if (!expected)
        return;
    m_place[SettingModel::Settings] = kNowhere;
    m_isActive = false;
}

void SettingWalk::pressCancel()
{
    note(QStringLiteral("Cancel"));
    CNetInfoUIService::instance()->OnClickSettingCancelButton();
    m_model->load(SettingModel::Settings);
    m_place[SettingModel::Settings] = kNowhere;
    m_isActive = false;
}

void SettingWalk::pressSave()
{
    QWidget *const button = control(SettingModel::Operator, QStringLiteral("savesettingbutton"));
    if (!button)
        return;
    planMessage();
    const bool expected = m_model->save(SettingModel::Operator);
    ++(expected ? m_saved : m_refused);
    note(QStringLiteral("Save, expected %1").arg(expected));
    m_messages = 1;
    QTest::mouseClick(button, Qt::LeftButton);
    const QString text
        = expected ? QStringLiteral("IDS_CHANGED_SAVE") : QStringLiteral("IDS_SAVE_FAILED");
    if (!fakeHost().messages.value(0).text.startsWith(text))
        m_wrong = QStringLiteral("Save did not say ") + text;
}

void SettingWalk::pressClear()
{
    QWidget *const button = control(SettingModel::Operator, QStringLiteral("clearhistorybutton"));
    if (!button)
        return;
    note(QStringLiteral("clear history"));
    planMessage();
    fakeHost().messageAnswer = below(2) * kAffirmative;
    m_messages = 1;
    QTest::mouseClick(button, Qt::LeftButton);
}

void SettingWalk::pressSetLimit()
{
    const int host = m_place[SettingModel::Operator];
    QWidget *const button = widget("NetInfoUIPlugin_ButtonSetLimit");
    if (host == kNowhere || !button)
        return;
    note(QStringLiteral("set limit"));
    QTest::mouseClick(button, Qt::LeftButton);
    if (m_model->controls(SettingModel::Settings).isEmpty())
        m_model->build(SettingModel::Settings);
    m_place[SettingModel::Settings] = host;
    m_isActive = true;
}
