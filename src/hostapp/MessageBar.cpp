#include "MessageBar.h"

#include "HostTexts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

MessageBar::MessageBar(QWidget *parent)
    : QFrame(parent)
    , m_icon(new QLabel(this))
    , m_text(new QLabel(this))
    , m_dismiss(new QPushButton(this))
{
    setObjectName(QStringLiteral("Host_MessageBar"));
    m_text->setObjectName(QStringLiteral("Host_MessageText"));
    m_dismiss->setObjectName(QStringLiteral("Host_MessageDismiss"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    m_text->setForegroundRole(QPalette::ToolTipText);
    m_text->setTextFormat(Qt::PlainText); // file names are not markup
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size));
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(m_icon, 0, Qt::AlignTop);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_dismiss, 0, Qt::AlignTop);
    connect(m_dismiss, &QPushButton::clicked, this, &QWidget::hide);
    hide();
    retranslate();
}

void MessageBar::setMessages(const QStringList &messages)
{
    m_text->setText(messages.join(QLatin1Char('\n')));
    setVisible(!messages.isEmpty());
}

void MessageBar::retranslate()
{
    m_dismiss->setText(hostText("HOST_DISMISS"));
    setAccessibleName(hostText("HOST_MESSAGES"));
    m_text->setAccessibleName(hostText("HOST_MESSAGES"));
}
