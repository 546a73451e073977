#include "NotifyService.h"

#include <utility>

NotifyService::NotifyService(QObject *parent)
    : QObject(parent)
{
}

NotifyService::~NotifyService() = default;

void NotifyService::addTarget(const QString &id, Target target)
{
    m_targets.insert(id, std::move(target));
}

void NotifyService::removeTarget(const QString &id)
{
    m_targets.remove(id);
}

int NotifyService::NotifyMessage(const QString &target, unsigned int msg, unsigned int wparam,
                                 unsigned int lparam)
{
    const Target receiver = m_targets.value(target); // a copy: it may remove itself meanwhile
    return receiver ? receiver(msg, wparam, lparam) : -1;
}
