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

/*! Answers of VELQ_NetConnectSrv_Connect(). */
enum {
    VELQ_CONNECT_DONE = 0, /*!< connected */
    VELQ_CONNECT_FAILED = 1, /*!< any other reason, a service that does not answer included */
    VELQ_CONNECT_NO_DEVICE = 2, /*!< there is no device that could connect */
    VELQ_CONNECT_NO_SERVICE = 3, /*!< no system bus, or no NetworkManager on it */
    VELQ_CONNECT_NOT_MANAGED = 4, /*!< NetworkManager does not control the device */
    VELQ_CONNECT_REFUSED = 5, /*!< this user is not permitted to */
    VELQ_CONNECT_NO_PROFILE = 6 /*!< NetworkManager has no connection that suits the device */
};

/*!
 * Connects the used device, or the one that was counted last, through NetworkManager with the
 * connection that suits it best. Waits until that is up: 30 seconds at most. Fails inside a
 * statistics callback.
 */
VELQ_EXPORT int VELQ_NetConnectSrv_Connect(void);

enum {
    VELQ_DEVICE_SIZE = 128, /*!< bytes of a device's key and label */
    VELQ_INTERFACE_SIZE = 16 /*!< bytes of an interface's name */
};

/*! A device that is there, or that the store remembers. Texts are UTF-8, NUL-terminated. */
typedef struct VELQ_Device
{
    char key[VELQ_DEVICE_SIZE]; /*!< who it is: "sim:", "modem:", "hw:" or "name:" and a number */
    char label[VELQ_DEVICE_SIZE]; /*!< for people: model and operator, else the interface */
    char interface[VELQ_INTERFACE_SIZE]; /*!< the latest one */
    int connectType;
    int present; /*!< the computer has it now; the next four are 0 otherwise */
    int up; /*!< able to carry traffic */
    int counted; /*!< its traffic is booked */
    int chosen; /*!< the live figures are its */
    int roaming;
    long long lastUse; /*!< seconds since 1970-01-01 UTC; 0: never counted */
    int hasModemFigures; /*!< what the modem itself says of its connection follows */
    unsigned long long modemDownload; /*!< bytes, for comparison only; some seconds old */
    unsigned long long modemUpload;
} VELQ_Device;

/*!
 * Lists the devices, those that are present first. \a list stays valid until it is handed to
 * VELQ_DevSrv_ReleaseDevices(); it is null when \a count is 0.
 */
VELQ_EXPORT int VELQ_DevSrv_GetDevices(VELQ_Device **list, int *count);
VELQ_EXPORT int VELQ_DevSrv_ReleaseDevices(VELQ_Device *list); /*!< null is allowed */

/*!
 * Counts only the device with this key or interface name from now on, also after a restart. Null or
 * empty: what carries the traffic, the standard. Fails for a text that is neither, and while
 * another process counts. VELQ_DevSrv_SetInterface() and VELQ_INTERFACE come before it.
 */
VELQ_EXPORT int VELQ_DevSrv_UseDevice(const char *device);
/*! Writes what VELQ_DevSrv_UseDevice() was given last; fails when it does not fit. */
VELQ_EXPORT int VELQ_DevSrv_GetUsedDevice(char *device, int size);

/*! A row of the books: what a device has used in one hour, or on one day. */
typedef struct VELQ_Usage
{
    long long start; /*!< hours: their beginning, seconds since 1970-01-01 UTC; days: -1 */
    int day; /*!< the local day, as days since 1970-01-01 */
    int connectType;
    int roaming; /*!< abroad */
    char device[VELQ_DEVICE_SIZE]; /*!< its key; "operator" for the operator's corrections */
    long long download; /*!< bytes; below 0 only in corrections */
    long long upload;
    long long timeMs; /*!< time connected, in milliseconds */
} VELQ_Usage;

/*!
 * The hours that begin in the span of \a from to \a to (seconds since 1970-01-01 UTC, without it),
 * oldest first. Hours are kept as long as VELQ_StoreSrv_SetKeptDays() says. Null for no rows.
 */
VELQ_EXPORT int VELQ_StatisticsSrv_GetHours(long long from, long long to, VELQ_Usage **list,
                                            int *count);
/*! The days from \a from to \a to (days since 1970-01-01, without it), oldest first. */
VELQ_EXPORT int VELQ_StatisticsSrv_GetDays(int from, int to, VELQ_Usage **list, int *count);
VELQ_EXPORT int VELQ_StatisticsSrv_ReleaseUsage(VELQ_Usage *list); /*!< null is allowed */

/*!
 * The local days of the current period of a report's \a kind (1, 3, 4, 5): from \a from to \a to,
 * without it, as days since 1970-01-01.
 */
VELQ_EXPORT int VELQ_StatisticsSrv_GetPeriod(int kind, int *from, int *to);

/*!
 * Takes over what the operator says of the current period of \a kind (1, 3, 4, 5): the reports
 * of \a type say these bytes now, and go on from there. Up to 2^62 bytes. Fails while another
 * process counts.
 */
VELQ_EXPORT int VELQ_StatisticsSrv_Correct(int kind, _VELQ_EN_CONNECT_TYPE type,
                                           unsigned long long download, unsigned long long upload);

/*! Kinds of VELQ_Reason. */
enum {
    VELQ_REASON_RECOVERED = 1, /*!< flowed while nobody counted, booked later */
    VELQ_REASON_COUNTER_FELL = 2, /*!< a device's counter restarted; nothing was counted for it */
    VELQ_REASON_CLOCK_STEPPED = 3, /*!< the clock jumped by seconds; the bytes were dated anew */
    VELQ_REASON_CORRECTED = 4, /*!< the operator's figure was taken over; the difference */
    VELQ_REASON_RESET = 5, /*!< the figures of the connect type were cleared */
    VELQ_REASON_SET_ASIDE = 6 /*!< a damaged store was replaced by an empty one */
};

/*! Why the figures are what they are: something out of the ordinary. */
typedef struct VELQ_Reason
{
    int kind;
    int connectType;
    long long at; /*!< seconds since 1970-01-01 UTC */
    char device[VELQ_DEVICE_SIZE]; /*!< its key; empty where no device is meant */
    long long download; /*!< bytes, by kind */
    long long upload;
    long long seconds;
} VELQ_Reason;

/*! The latest \a most reasons, oldest first. Null for none. */
VELQ_EXPORT int VELQ_StatisticsSrv_GetReasons(int most, VELQ_Reason **list, int *count);
VELQ_EXPORT int VELQ_StatisticsSrv_ReleaseReasons(VELQ_Reason *list); /*!< null is allowed */

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
 * disk), NUL-terminated and cut to \a size, never within a character; empty while all is well.
 */
VELQ_EXPORT int VELQ_StoreSrv_GetProblem(char *text, int size);

/*! Writes the path of the store's file; empty while it is in memory only. */
VELQ_EXPORT int VELQ_StoreSrv_GetPath(char *path, int size);

/*! 1: this process counts. 0: another one does, and this one only reads. -1: no service. */
VELQ_EXPORT int VELQ_StoreSrv_IsCounting(void);

/*!
 * Keeps hours for \a days days (1 to 36500, at least a week), 730 without this call; 0: for ever.
 * Their days are always kept. At any time; not stored.
 */
VELQ_EXPORT int VELQ_StoreSrv_SetKeptDays(int days);

/*!
 * Copies the store, while it is in use, to the new file \a path (absolute, UTF-8). On failure
 * \a problem, if it is not null, gets the reason in English, cut to \a size.
 */
VELQ_EXPORT int VELQ_StoreSrv_BackUp(const char *path, char *problem, int size);

#ifdef __cplusplus
}
#endif

#endif /* HOST_VELQ_EXTENSION_H */
