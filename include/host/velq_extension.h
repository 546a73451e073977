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

/*! Answers of VELQ_NetConnectSrv_Disconnect(). */
enum {
    VELQ_DISCONNECT_DONE = 0, /*!< the connection is down or going down */
    VELQ_DISCONNECT_FAILED = 1, /*!< any other reason, a service that does not answer included */
    VELQ_DISCONNECT_NO_CONNECTION = 2, /*!< nothing is connected */
    VELQ_DISCONNECT_NO_SERVICE = 3, /*!< no system bus, or no NetworkManager on it */
    VELQ_DISCONNECT_NOT_MANAGED = 4, /*!< NetworkManager does not control the interface */
    VELQ_DISCONNECT_REFUSED = 5 /*!< this user is not permitted to */
};

/*!
 * Takes the counted connection down through NetworkManager, which then does not bring it up again
 * by itself. Waits until it is going down: usually well below a second, five at most. Fails inside
 * a statistics callback. The demo takes its scripted connection down; a new one comes up 15 seconds
 * later.
 */
VELQ_EXPORT int VELQ_NetConnectSrv_Disconnect(void);

/*!
 * Lets the weekly report (kind 3) begin on \a weekday, 0 (Monday) to 6 (Sunday), and the monthly
 * one (kind 4) on \a dayOfMonth, 1 to 31; in a shorter month that is its last day. At any time; not
 * stored: without it they begin on Monday and on the first. Other numbers fail and change nothing.
 */
VELQ_EXPORT int VELQ_StatisticsSrv_SetPeriodStart(int weekday, int dayOfMonth);

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
