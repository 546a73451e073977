#ifndef HOST_EXTENDLINEEDIT_H
#define HOST_EXTENDLINEEDIT_H

#include <QLineEdit>

#include "HostCoreExport.h"

class ExtendLineEditPrivate;

//! The host's line edit. GUI thread. Owned by its parent or its creator, like any widget.
class HOST_CORE_EXPORT ExtendLineEdit : public QLineEdit
{
    Q_OBJECT
public:
    explicit ExtendLineEdit(QWidget *parent = nullptr);
    ~ExtendLineEdit() override;

private:
    Q_DISABLE_COPY(ExtendLineEdit)
    ExtendLineEditPrivate *d;
};

#endif // HOST_EXTENDLINEEDIT_H
