#ifndef HOST_HOSTCOREEXPORT_H
#define HOST_HOSTCOREEXPORT_H

#include <QtGlobal>

//! Marks what the host core library exports. HOST_CORE_BUILD is defined only while it is built.
#ifdef HOST_CORE_BUILD
#define HOST_CORE_EXPORT Q_DECL_EXPORT
#else
#define HOST_CORE_EXPORT Q_DECL_IMPORT
#endif

#endif // HOST_HOSTCOREEXPORT_H
