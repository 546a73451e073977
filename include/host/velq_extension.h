#ifndef HOST_VELQ_EXTENSION_H
#define HOST_VELQ_EXTENSION_H

#include "velq.h"

/*!
 * What the device SDK adds for the host that owns it; plug-ins do not use it. 0 is success; every
 * other result is a failure that left its output arguments untouched. Any thread.
 */

#ifdef __cplusplus
extern "C" {
#endif

/*!
 * Counts interface \a name instead of the one that carries the default route. Null or empty: the
 * environment variable VELQ_INTERFACE, else the default route. Fails once the SDK has been used,
 * and for a name that no interface can have (more than 15 bytes, "/" or blanks).
 */
VELQ_EXPORT int VELQ_DevSrv_SetInterface(const char *name);

/*!
 * Replays a scripted connection instead of the kernel's counters and keeps its figures in memory.
 * Fails once the SDK has been used.
 */
VELQ_EXPORT int VELQ_DevSrv_StartDemo(void);

/*! Writes the name of the counted interface, NUL-terminated; empty while there is none. */
VELQ_EXPORT int VELQ_DevSrv_GetInterface(char *name, int size);

/*! The kernel's counters of the counted interface, in bytes. */
typedef struct VELQ_Counters
{
    unsigned long long firstDownload; /*!< at the first reading of this connection, or its reset */
    unsigned long long firstUpload;
    unsigned long long lastDownload; /*!< at the latest reading */
    unsigned long long lastUpload;
} VELQ_Counters;

/*! Copies the counters behind the live figures. Fails while no interface is counted. */
VELQ_EXPORT int VELQ_DevSrv_GetCounters(VELQ_Counters *counters);

/*!
 * Keeps the store in \a directory (absolute, UTF-8, created when missing). Null or empty: the
 * environment variable VELQ_DATA_DIR, else "velq" in the user's XDG data directory. Fails once the
 * SDK has been used.
 */
VELQ_EXPORT int VELQ_StoreSrv_SetDirectory(const char *directory);

/*!
 * Writes in English words what is wrong with the store at the moment (set aside, not writable, full
 * disk), NUL-terminated and cut to \a size; empty while all is well.
 */
VELQ_EXPORT int VELQ_StoreSrv_GetProblem(char *text, int size);

#ifdef __cplusplus
}
#endif

#endif /* HOST_VELQ_EXTENSION_H */
