#include <host/CommonUtils.h>

#include <QDialog>
#include <QGuiApplication>
#include <QScreen>

// Gives a dialog that nobody has sized yet the size that show() would give it, without marking it
// as sized by the user.
static void settleSize(QDialog *dialog)
{
    if (dialog->testAttribute(Qt::WA_Resized))
        return;
    dialog->adjustSize();
    dialog->setAttribute(Qt::WA_Resized, false);
}

static QRect screenArea(const QWidget *widget)
{
    const QScreen *screen = widget->screen();
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

// Moves the frame so that its centre is at \a centre, then back into \a area: the title bar and the
// leading edge win where the dialog is larger than the screen.
static void centreAt(QDialog *dialog, const QPoint &centre, const QRect &area)
{
    // Qt 5 makes the frame of a dialog that has never been shown a pixel too small.
    const QSize size = dialog->frameGeometry().size().expandedTo(dialog->size());
    QPoint corner = centre - QPoint(size.width() / 2, size.height() / 2);
    if (area.isValid()) {
        corner.setX(qMin(corner.x(), area.right() + 1 - size.width()));
        corner.setY(qMin(corner.y(), area.bottom() + 1 - size.height()));
        corner.setX(qMax(corner.x(), area.left()));
        corner.setY(qMax(corner.y(), area.top()));
    }
    dialog->move(corner);
}

void CommonUtils::MoveCentre(QDialog *dialog)
{
    if (!dialog)
        return;
    settleSize(dialog);
    const QRect area = screenArea(dialog);
    if (area.isValid())
        centreAt(dialog, area.center(), area);
}

void CommonUtils::MoveRelatedCentre(QDialog *dialog)
{
    if (!dialog)
        return;
    const QWidget *window = dialog->parentWidget() ? dialog->parentWidget()->window() : nullptr;
    if (!window || !window->isVisible()) { // where it will be, nobody knows yet
        MoveCentre(dialog);
        return;
    }
    settleSize(dialog);
    centreAt(dialog, window->frameGeometry().center(), screenArea(window));
}
