#include "OkCancelBox.h"

#include "HostTexts.h"

#include <QPushButton>

static QVector<QWidget *> tabStops(const QWidget *page)
{
    QVector<QWidget *> stops;
    for (QWidget *w = page->nextInFocusChain(); w != page; w = w->nextInFocusChain()) {
        if (page->isAncestorOf(w) && (w->focusPolicy() & Qt::TabFocus) != 0)
            stops.append(w);
    }
    return stops;
}

QWidget *firstTabStop(const QWidget *page)
{
    for (QWidget *widget : tabStops(page)) {
        if (widget->isEnabledTo(page) && widget->isVisibleTo(page))
            return widget;
    }
    return nullptr;
}

OkCancelBox::OkCancelBox(QWidget *parent)
    : QDialogButtonBox(parent)
    , m_ok(addButton(QString(), AcceptRole))
    , m_cancel(addButton(QString(), RejectRole))
{
    m_ok->setObjectName(QStringLiteral("Host_SettingsOk"));
    m_cancel->setObjectName(QStringLiteral("Host_SettingsCancel"));
    for (QPushButton *button : { m_ok, m_cancel })
        button->setAutoDefault(true); // outside a dialog it is off
    retranslate();
}

void OkCancelBox::retranslate()
{
    setAccessibleName(hostText("HOST_SETTINGS_TITLE"));
    m_ok->setText(hostText("HOST_OK"));
    m_cancel->setText(hostText("HOST_CANCEL"));
}

// The base makes OK its focus proxy whenever it lays the buttons out, as with a new style, and is
// then a tab stop of its own, before the page.
void OkCancelBox::changeEvent(QEvent *event)
{
    QDialogButtonBox::changeEvent(event);
    setFocusProxy(nullptr);
}

// A page that comes into a window is put last in its focus chain.
void OkCancelBox::followInTabOrder(QWidget *page)
{
    setFocusProxy(nullptr);
    const QVector<QWidget *> stops = tabStops(page);
    if (stops.isEmpty())
        return;
    setTabOrder(stops.constLast(), m_ok);
    setTabOrder(m_ok, m_cancel);
}
