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
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(m_icon, 0, Qt::AlignTop);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_dismiss, 0, Qt::AlignTop);
    connect(m_dismiss, &QPushButton::clicked, this, &MessageBar::dismiss);
    retranslate();
}

void MessageBar::setMessages(const QStringList &messages)
{
    m_messages = messages;
    refresh();
}

void MessageBar::setNotice(const Notice &notice)
{
    m_notice = notice;
    refresh();
}

void MessageBar::retranslate()
{
    m_dismiss->setText(hostText("HOST_DISMISS"));
    setAccessibleName(hostText("HOST_MESSAGES"));
    m_text->setAccessibleName(hostText("HOST_MESSAGES"));
    refresh();
}

void MessageBar::dismiss()
{
    m_messages.clear();
    m_notice = {};
    refresh();
}

void MessageBar::refresh()
{
    QStringList lines = m_messages;
    if (m_notice.key)
        lines.append(hostText(m_notice.key));
    const bool isWarning = !m_messages.isEmpty() || m_notice.isWarning;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    const auto icon = isWarning ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxInformation;
    m_icon->setPixmap(style()->standardIcon(icon).pixmap(size));
    m_text->setText(lines.join(QLatin1Char('\n')));
    setVisible(!lines.isEmpty());
}
