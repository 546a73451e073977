#include <host/Change.h>
#include <host/CommonUtils.h>

#include <QPointer>
#include <QPushButton>

#include <memory>

// Plug-ins give texts or the host's keys; a text that is no key stays as it is.
static QString buttonText(const QString &text)
{
    return Change::tr(QStringLiteral("NetInfoUIExPlugin"), text);
}

static QString okText()
{
    const QString key = QStringLiteral("IDS_OK");
    const QString text = buttonText(key);
    return text == key ? QString() : text; // without texts Qt's own word stands
}

static QAbstractButton *addButton(QMessageBox *box, QMessageBox::StandardButton code,
                                  const QString &text)
{
    QPushButton *button = box->addButton(code);
    if (!text.isEmpty())
        button->setText(text);
    return button;
}

// The codes are those of QMessageBox: Ok is 1024. The last button answers Escape and the window's
// close button, so that closing never means the affirmative answer of a question.
static void addButtons(QMessageBox *box, const QString &button0, const QString &button1,
                       const QString &button2)
{
    QAbstractButton *first
        = addButton(box, QMessageBox::Ok, button0.isEmpty() ? okText() : buttonText(button0));
    QAbstractButton *escape = first;
    if (!button1.isEmpty())
        escape = addButton(box, QMessageBox::No, buttonText(button1));
    if (!button2.isEmpty())
        escape = addButton(box, QMessageBox::Cancel, buttonText(button2));
    box->setDefaultButton(qobject_cast<QPushButton *>(first));
    box->setEscapeButton(escape);
}

// Keeps *dialog true while the box is open. It is cleared when the box closes or dies and never
// afterwards: the caller's variable may be gone by the time exec() returns.
static void publish(QMessageBox *box, QDialog **dialog)
{
    if (!dialog)
        return;
    *dialog = box;
    const auto open = std::make_shared<bool>(true);
    const auto clear = [dialog, open] {
        if (*open)
            *dialog = nullptr;
        *open = false;
    };
    QObject::connect(box, &QDialog::finished, box, clear);
    QObject::connect(box, &QObject::destroyed, clear);
}

int CommonUtils::ShowMessage(QMessageBox::Icon icon, QWidget *parent, const QString &title,
                             const QString &text, const QString &button0, const QString &button1,
                             const QString &button2, Qt::WindowFlags flags, QDialog **dialog)
{
    // On the heap and guarded: the parent may die in the event loop and take the box with it.
    const QPointer<QMessageBox> box(new QMessageBox(parent));
    if (flags)
        box->setWindowFlags(box->windowFlags() | flags);
    box->setIcon(icon);
    box->setWindowTitle(title);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    addButtons(box, button0, button1, button2);
    publish(box, dialog);
    const int answer = box->exec();
    if (!box)
        return QMessageBox::NoButton; // nobody answered
    delete box;
    return answer;
}
