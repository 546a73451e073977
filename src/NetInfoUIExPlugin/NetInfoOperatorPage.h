#pragma once
// The frame of the operator page: scrolls, and stacks its two columns where they do not fit side by
// side.

#include <QPointer>
#include <QScrollArea>

QT_BEGIN_NAMESPACE
class QBoxLayout;
QT_END_NAMESPACE

class NetInfoOperatorPage : public QScrollArea
{
    Q_OBJECT
public:
    explicit NetInfoOperatorPage(QWidget *parent = nullptr);

    //! The row of \a columns, somewhere in the page's widget.
    void setColumns(QBoxLayout *columns);

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    //! Chooses the row's direction for the width that there is.
    void arrangeColumns();

    QPointer<QBoxLayout> m_columns;
};
