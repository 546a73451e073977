#ifndef HOST_COMMONUTILS_H
#define HOST_COMMONUTILS_H

#include <QMessageBox>
#include <QString>
#include <Qt>
#include <QVector>

#include "HostCoreExport.h"
#include "TagUnits.h"

QT_BEGIN_NAMESPACE
class QDialog;
class QWidget;
QT_END_NAMESPACE

//! The host's small services: message boxes, formatting, folders. GUI thread only.
class HOST_CORE_EXPORT CommonUtils
{
public:
    //! Shows a modal message box with up to three buttons (an empty \a button0 gives one OK button)
    //! and returns the code of the pressed one: 1024 for the first, the affirmative answer. Runs an
    //! event loop. \a dialog, where given, holds the box while it is open and null afterwards.
    static int ShowMessage(QMessageBox::Icon icon, QWidget *parent, const QString &title,
                           const QString &text, const QString &button0,
                           const QString &button1 = QString(), const QString &button2 = QString(),
                           Qt::WindowFlags flags = Qt::WindowFlags(), QDialog **dialog = nullptr);
    //! Centres \a dialog on the screen.
    static void MoveCentre(QDialog *dialog);
    //! Centres \a dialog over its parent's window, within the screen; without a parent on the
    //! screen.
    static void MoveRelatedCentre(QDialog *dialog);
    //! \a value (bytes, or bytes per second) in the largest unit whose factor is not above it: two
    //! decimals, a blank, the unit's text from the translations of \a module. Numbers are written
    //! in the user's locale. An amount below every unit is given in the smallest one.
    static QString SpeedFluxToString(QVector<TagUnits> units, unsigned long long value,
                                     QString module);
    //! The text of the table's first unit, for captions; empty for an empty table.
    static QString SpeedUnitToString(QVector<TagUnits> units, QString module);
    //! The folder that holds the "plugins" folder, without a separator at its end.
    static QString GetPluginLibraryPath();
    //! The user's data folder, with a separator at its end; empty when there is none.
    static QString getUserDataDirectory();
};

#endif // HOST_COMMONUTILS_H
