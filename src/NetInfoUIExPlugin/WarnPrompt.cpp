#include "WarnPrompt.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <host/Change.h>
#include <host/CommonUtils.h>
#include <host/INotifyService.h>
#include <host/IPluginContainer.h>
#include <host/Startup.h>
#include <host/velq.h>

#include <new>

#include "NetInfoLog.h"
#include "NetInfoUIService_p.h"

namespace {

constexpr char kSource[] = NETINFO_SERVICE_SOURCE;
constexpr char kButtonName[] = "NetInfoSettingDlg_savesettingbutton"; // so the host styles both

//! What is missing, as the null line's number tells it.
enum MissingPiece {
    MissingDialog = 798,
    MissingMainWidget,
    MissingDisconnectButton,
    MissingLabel,
    MissingCheckBox,
    MissingOkButton,
    MissingLayout,
    MissingButtonRow
};

constexpr char kNotifyService[] = "5B1E7C20-3D4A-4F6B-9C81-2A7D0E4F6B13";
constexpr int kNotifyServiceKind = 8209;
constexpr char kConnectionPlugin[] = "3F6A2B91-C84D-4E07-A1F3-6D52E0B9C724";
constexpr unsigned int kDisconnectRequest = 514;

//! Whether \a piece is there; else its null line.
[[nodiscard]] bool require(const void *piece, MissingPiece missing)
{
    if (!piece) {
        NETINFO_DEBUG("Arg is NULL: %s: %s: %s %d", NETINFO_LOG_TIME, kSource, "createWarnDlg",
                      int(missing));
    }
    return piece != nullptr;
}

void setUpButton(QPushButton *button, const QString &text)
{
    button->setObjectName(QLatin1String(kButtonName));
    button->setText(text);
    button->setFocusPolicy(Qt::NoFocus);
    button->setCursor(Qt::PointingHandCursor);
}

[[nodiscard]] bool isConnected()
{
    VELQ_ConnectionStatus *list = nullptr;
    int count = 0;
    if (VELQ_NetConnectSrv_GetConnectionStatus(&list, &count) != 0)
        return false;
    VELQ_NetConnectSrv_ReleaseConnectionStatus(list);
    return count != 0;
}

void requestDisconnect()
{
    IPluginContainer *const container = Startup::GetPluginContainer();
    QObject *const plugin = container
        ? container->GetPlugin(QLatin1String(kNotifyService), kNotifyServiceKind)
        : nullptr;
    if (INotifyService *const service = qobject_cast<INotifyService *>(plugin))
        service->NotifyMessage(QLatin1String(kConnectionPlugin), kDisconnectRequest, 0, 0);
}

} // namespace

WarnPrompt::WarnPrompt() = default;

WarnPrompt::~WarnPrompt()
{
    delete m_dialog;
    delete m_mainWidget; // not in the dialog when the build stopped
}

void WarnPrompt::createWarnDlg(QWidget *parent)
{
    if (!createDialog(parent) || !createControls() || !createLayouts())
        return;
    m_dialog->AddMainWidget(m_mainWidget);
    connect(m_okButton, SIGNAL(clicked()), this, SLOT(onOkButtonClicked()));
    connect(m_disconnectButton, SIGNAL(clicked()), this, SLOT(onDisConnectButtonClicked()));
}

bool WarnPrompt::createDialog(QWidget *parent)
{
    m_dialog = new (std::nothrow)
        ExtendDialog(parent, Qt::Dialog | Qt::WindowCloseButtonHint, WIDGET_TYPE_DIALOG);
    if (!require(m_dialog, MissingDialog))
        return false;
    m_dialog->setObjectName(QLatin1String("WarnDlg_ExtendedDlg"));
    m_dialog->setWindowTitle(tr(QLatin1String("IDS_BOX_WARNTITLE")));
    m_dialog->setFixedSize(430, 155);
    m_dialog->setWindowModality(Qt::WindowModal);
    CommonUtils::MoveCentre(m_dialog);
    m_mainWidget = new (std::nothrow) QWidget(parent);
    if (!require(m_mainWidget, MissingMainWidget))
        return false;
    m_mainWidget->setObjectName(QLatin1String("WarnDlg_WidgetMain"));
    return true;
}

bool WarnPrompt::createControls()
{
    m_disconnectButton = new (std::nothrow) QPushButton(m_mainWidget);
    if (!require(m_disconnectButton, MissingDisconnectButton))
        return false;
    setUpButton(m_disconnectButton, tr(QLatin1String("IDS_DISCONNECT_BUTTON")));
    m_label = new (std::nothrow) QLabel(tr(QLatin1String("IDS_BOX_WARNTITLE")), m_mainWidget);
    if (!require(m_label, MissingLabel))
        return false;
    m_label->setObjectName(QLatin1String("WarnDlg_LabelWarn"));
    m_label->setWordWrap(true);
    m_checkBox
        = new (std::nothrow) QCheckBox(tr(QLatin1String("IDS_BOX_WARNBEFORE")), m_mainWidget);
    if (!require(m_checkBox, MissingCheckBox))
        return false;
    m_checkBox->setObjectName(QLatin1String("WarnDlg_CheckBox"));
    m_checkBox->hide();
    m_okButton = new (std::nothrow) QPushButton(m_mainWidget);
    if (!require(m_okButton, MissingOkButton))
        return false;
    setUpButton(m_okButton, tr(QLatin1String("IDS_BOX_WARNIDOK")));
    m_okButton->setDefault(true); // no button takes the focus, so Enter needs one
    return true;
}

bool WarnPrompt::createLayouts()
{
    QVBoxLayout *const layout = new (std::nothrow) QVBoxLayout(m_mainWidget);
    if (!require(layout, MissingLayout))
        return false;
    layout->setObjectName(QLatin1String("WarnDlg_layoutMain"));
    layout->addWidget(m_label);
    layout->addWidget(m_checkBox);
    QHBoxLayout *const buttons = new (std::nothrow) QHBoxLayout;
    if (!require(buttons, MissingButtonRow))
        return false;
    buttons->addWidget(m_disconnectButton);
    buttons->addWidget(m_okButton);
    layout->addLayout(buttons);
    layout->setAlignment(buttons, Qt::AlignRight);
    return true;
}

void WarnPrompt::ShowWarnDlg(QWidget *parent, QString text)
{
    NETINFO_TRACE("%s : %s : %s : called", kSource);
    if (!m_dialog)
        createWarnDlg(parent);
    if (!m_dialog)
        return;
    if (m_label)
        m_label->setText(text);
    if (m_okButton) // the language may have changed
        m_okButton->setText(tr(QLatin1String("IDS_BOX_WARNIDOK")));
    NETINFO_TRACE("%s : %s : %s : Entered", kSource);
    showDisconnectButton();
    CommonUtils::MoveRelatedCentre(m_dialog);
    m_dialog->setWindowTitle(tr(QLatin1String("IDS_BOX_WARNTITLE")));
    m_dialog->show();
}

void WarnPrompt::showDisconnectButton()
{
    static constexpr char kFunction[] = "ShowWarnDlg";
    const bool connected = isConnected();
    if (connected) {
        NETINFO_DEBUG("%s : %s : %s : Get ConnectState as Connected", NETINFO_LOG_TIME, kSource,
                      kFunction);
    }
    NETINFO_DEBUG("%s : %s : %s : Exit", NETINFO_LOG_TIME, kSource, kFunction);
    if (!m_disconnectButton)
        return;
    if (connected)
        m_disconnectButton->setText(tr(QLatin1String("IDS_DISCONNECT_BUTTON")));
    m_disconnectButton->setVisible(connected);
}

void WarnPrompt::CloseDlg()
{
    if (m_dialog)
        m_dialog->close();
}

void WarnPrompt::onOkButtonClicked()
{
    CloseDlg();
}

void WarnPrompt::onDisConnectButtonClicked()
{
    if (m_disconnectButton)
        m_disconnectButton->setEnabled(false); // against double clicks
    // The message may run an event loop in which the host destroys the plug-in.
    const QPointer<WarnPrompt> self(this);
    requestDisconnect();
    if (!self)
        return;
    if (m_disconnectButton)
        m_disconnectButton->setEnabled(true);
    CloseDlg();
}

QString WarnPrompt::tr(QString key)
{
    return Change::tr(QLatin1String(NETINFO_MODULE_NAME), key);
}
