#pragma once
// The dialog that tells of a usage limit and offers to disconnect.

#include <QCheckBox>
#include <QLabel>
#include <QObject>
#include <QPointer>
#include <QPushButton>
#include <QString>

#include <host/ExtendDialog.h>

//! GUI thread only. The dialog is made when it is first shown, and again when it died with its
//! parent.
class WarnPrompt : public QObject
{
    Q_OBJECT
public:
    WarnPrompt();
    //! Deletes the dialog.
    ~WarnPrompt() override;

    //! Builds the dialog over \a parent.
    void createWarnDlg(QWidget *parent);
    //! Shows \a text and returns at once. The button Disconnect is there while a connection is.
    void ShowWarnDlg(QWidget *parent, QString text);
    void CloseDlg();
    //! The text of identifier \a key.
    QString tr(QString key);

public slots:
    void onOkButtonClicked();
    //! Asks the host to disconnect and closes the dialog.
    void onDisConnectButtonClicked();

private:
    [[nodiscard]] bool createDialog(QWidget *parent);
    [[nodiscard]] bool createControls();
    [[nodiscard]] bool createLayouts();
    void showDisconnectButton();

    QPointer<ExtendDialog> m_dialog; // owns what follows
    QPointer<QWidget> m_mainWidget;
    QPointer<QLabel> m_label;
    QPointer<QCheckBox> m_checkBox;
    QPointer<QPushButton> m_okButton;
    QPointer<QPushButton> m_disconnectButton;
};
