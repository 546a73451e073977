#include "NetInfoOperatorPage.h"

#include <QBoxLayout>
#include <QEvent>
#include <QScrollBar>

NetInfoOperatorPage::NetInfoOperatorPage(QWidget *parent)
    : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
}

void NetInfoOperatorPage::setColumns(QBoxLayout *columns)
{
    m_columns = columns;
    columns->parentWidget()->installEventFilter(this);
    arrangeColumns();
}

void NetInfoOperatorPage::arrangeColumns()
{
    if (!m_columns)
        return;
    int needed = 0;
    for (int i = 0; i < m_columns->count(); ++i) {
        const int width = m_columns->itemAt(i)->minimumSize().width();
        needed += width > 0 ? width + (needed > 0 ? m_columns->spacing() : 0) : 0;
    }
    // The scroll bar counts as there, so that its coming does not turn the row to and fro.
    const int room = width() - verticalScrollBar()->sizeHint().width();
    m_columns->setDirection(needed <= room ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

void NetInfoOperatorPage::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    arrangeColumns();
}

bool NetInfoOperatorPage::eventFilter(QObject *watched, QEvent *event)
{
    // Texts or fonts have changed, and the columns know their new sizes.
    if (m_columns && watched == m_columns->parentWidget() && event->type() == QEvent::LayoutRequest)
        arrangeColumns();
    return QScrollArea::eventFilter(watched, event);
}
