#include "SettingsPageArea.h"

#include "SettingModule.h"

#include <QVBoxLayout>

static constexpr QSize kUsualPageSize(420, 360); // pixels; for a page that does not say

SettingsPageArea::SettingsPageArea(QWidget *parent)
    : QScrollArea(parent)
{
    auto *holder = new QWidget;
    auto *layout = new QVBoxLayout(holder);
    layout->setContentsMargins(0, 0, 0, 0);
    holder->resize(kUsualPageSize);
    setWidget(holder);
    setWidgetResizable(true);
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus); // the page's controls have it, and scroll into sight with it
}

void SettingsPageArea::embed(const SettingModule &module)
{
    module.show(widget());
    if (QWidget *shown = page())
        widget()->layout()->addWidget(shown);
}

QWidget *SettingsPageArea::page() const
{
    const auto children = widget()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        if (!child->isWindow())
            return child;
    }
    return nullptr;
}

QSize SettingsPageArea::sizeHint() const
{
    return widget()->sizeHint().expandedTo(kUsualPageSize);
}
