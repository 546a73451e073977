#ifndef HOST_VELQ_H
#define HOST_VELQ_H

/*!
 * Device SDK, C interface. 0 is success; every other result is a failure that left its output
 * arguments untouched. All functions may be called from any thread, also from inside a callback.
 */

#ifdef __cplusplus
extern "C" {
#endif

#ifndef VELQ_EXPORT
#if defined(__GNUC__)
#define VELQ_EXPORT __attribute__((visibility("default")))
#else
#define VELQ_EXPORT
#endif
#endif

/*! How the connection is made; the two kinds are counted apart. */
/* clang-format off */
typedef enum _VELQ_EN_CONNECT_TYPE
#ifdef __cplusplus
    : int
#endif
{
    VELQ_CONNECT_TYPE_DIALUP = 0, /*!< everything that is not Wi-Fi */
    VELQ_CONNECT_TYPE_WLAN = 1 /*!< Wi-Fi */
} _VELQ_EN_CONNECT_TYPE;
/* clang-format on */

enum {
    VELQ_STATISTICS_REPORT_SIZE = 576, /*!< bytes of a statistics report */
    VELQ_EVENT_STATISTICS = 8000, /*!< callback event: live figures, once a second */
    VELQ_CUSTOMIZE_NAME_SIZE = 128 /*!< bytes of the customisation name's buffer */
};

/*!
 * Statistics callback; runs on a thread of the SDK, never under a lock of it. \a event is
 * VELQ_EVENT_STATISTICS; \a data lives until the callback returns: byte 0 is 1 while a connection
 * is up, bytes 1 to 3 are padding, bytes 4 to 7 hold the connect type (32 bits, little-endian). The
 * result is not used.
 */
typedef int (*VELQ_StatisticsCallback)(int event, void *data);

/*! Registers \a callback and starts the live figures. Registering it again changes nothing. */
VELQ_EXPORT int VELQ_Statistics_RegisterStatisticsCallbackEvent(VELQ_StatisticsCallback callback);

/*!
 * Unregisters \a callback. When this has returned, it is not running and will not start, unless it
 * is the caller itself. Unknown callbacks are a failure.
 */
VELQ_EXPORT int VELQ_Statistics_UnRegisterStatisticsCallbackEvent(VELQ_StatisticsCallback callback);

/*!
 * Fills \a report (576 bytes) for \a kind: 0 live, 1 daily, 2 last reset, 3 weekly, 4 monthly,
 * 5 yearly. Fields, little-endian and not aligned: 524 download and 532 upload (64 bits, bytes),
 * 540 download speed and 544 upload speed (32 bits, bytes per second), 556 connection time (64
 * bits, signed, seconds), 568 last reset (32 bits, seconds since 1970-01-01 UTC). The rest is zero.
 */
VELQ_EXPORT int VELQ_Statistics_GetReport(int kind, void *report, _VELQ_EN_CONNECT_TYPE type);

/*!
 * Fills \a report with the sums of all stored hours from \a key (seconds since 1970-01-01 UTC,
 * rounded down to its hour) until now. 0 means since the beginning.
 */
VELQ_EXPORT int VELQ_Statistics_GetSpecHistroryData(void *report, unsigned long long key);

/*! Clears the stored and the live figures of \a type and remembers the time of the reset. */
VELQ_EXPORT int VELQ_Statistics_Reset(_VELQ_EN_CONNECT_TYPE type);

/*! One connection that is up; opaque. */
typedef struct VELQ_ConnectionStatus VELQ_ConnectionStatus;

/*!
 * Lists the connections that are up. \a list stays valid until it is handed to
 * VELQ_NetConnectSrv_ReleaseConnectionStatus; it is null when \a count is 0.
 */
VELQ_EXPORT int VELQ_NetConnectSrv_GetConnectionStatus(VELQ_ConnectionStatus **list, int *count);

/*! Takes a list back. Null is allowed. */
VELQ_EXPORT int VELQ_NetConnectSrv_ReleaseConnectionStatus(VELQ_ConnectionStatus *list);

/*! Writes the operator's customisation name, NUL-terminated, to a buffer of 128 bytes. */
VELQ_EXPORT int VELQ_DevSrv_GetCustomizeName(char *name);

#ifdef __cplusplus
}
#endif

#endif /* HOST_VELQ_H */
