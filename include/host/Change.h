#ifndef HOST_CHANGE_H
#define HOST_CHANGE_H

#include <QString>

#include "HostCoreExport.h"

//! The host's translator.
class HOST_CORE_EXPORT Change
{
public:
    //! The text of identifier \a key (for example "IDS_YES") in the language in force. \a context
    //! is the module's name, always the first argument. An unknown key gives the key itself. GUI
    //! thread.
    static QString tr(const QString &context, const QString &key);
};

#endif // HOST_CHANGE_H
