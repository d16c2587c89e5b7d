/*
 * The C interface of the USB transport library, libzkcomtl.so.1: lists the printers of a vendor, asks a
 * printer for its status, and moves bytes to and from it. Several libraries implement it under this name, and
 * a program works with each of them.
 *
 *     void *handle = NULL;
 *     if (tl_usb_get_device_handle("usb://Zelkor/L200%20Series?serial=SN0002", 2, &handle) == TL_USB_OK) {
 *         uint8_t reply[4096];
 *         int32_t length = (int32_t)sizeof reply;
 *         tl_usb_data_transfer_by_handle(handle, request, request_length, 10000, NULL, NULL, 0);
 *         tl_usb_data_transfer_by_handle(handle, NULL, 0, 10000, reply, &length, 0);
 *         tl_usb_close_device_handle(handle);
 *     }
 *
 * Threads: every function may be called from any thread. A call blocks its thread until it is done, and may
 * wait for a call in progress with the same printer on another thread. Handles are not bound to threads.
 * End of the process: on exit and quick_exit, from any thread, calls in progress are cancelled (on quick_exit
 * they do not return any more) and every printer is given back to the kernel.
 * Units: every time-out is in milliseconds; below 1 it counts as 1.
 * Text: zero-terminated UTF-8. Functions do not keep the texts they are given.
 * Errors: every function returns TL_USB_OK or another value of tl_usb_status, and throws nothing.
 * Which printer: a URI names the attached printer with exactly its manufacturer, product and serial number.
 */
#ifndef ZKCOMTL_H
#define ZKCOMTL_H

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

#define TL_USB_API __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

typedef enum tl_usb_status {
    TL_USB_OK = 0,
    TL_USB_ERROR_INVALID = -1,   /* an argument is unusable, or the handle is not an open one */
    TL_USB_ERROR_NO_DEVICE = -2, /* no such printer is attached, or it was unplugged */
    TL_USB_ERROR_ACCESS = -3,    /* the printer is there, but this user may not open it */
    TL_USB_ERROR_BUSY = -4,      /* another program holds the printer, or prints through /dev/usb/lp */
    TL_USB_ERROR_TIMEOUT = -5,   /* the printer did not take everything, or sent nothing, in time */
    TL_USB_ERROR_IO = -6,        /* the transfer failed on the wire or in the printer */
    TL_USB_ERROR_OVERFLOW = -7,  /* the printer sent a transfer longer than the read buffer */
    TL_USB_ERROR_NO_MEMORY = -8,
    TL_USB_ERROR_STALL = -9,      /* the printer refused the transfer; the next one may succeed */
    TL_USB_ERROR_CANCELLED = -10, /* the handle was closed or retired, or the library ended, in the call */
    TL_USB_ERROR_ENDLESS = -11,   /* the printer does not stop sending */
    TL_USB_ERROR_AMBIGUOUS = -12  /* several attached printers have the name in the URI */
} tl_usb_status;

/* One attached printer: 772 bytes without padding, host byte order, repeated back to back in a list. */
#pragma pack(push, 1)
typedef struct tl_usb_device_info {
    char serial[256];
    char product[256];
    char manufacturer[256];
    uint16_t pid;
    uint16_t vid;
} tl_usb_device_info;
#pragma pack(pop)

static_assert(sizeof(tl_usb_device_info) == 772, "a device record has 772 bytes");
static_assert(offsetof(tl_usb_device_info, serial) == 0, "serial is at 0");
static_assert(offsetof(tl_usb_device_info, product) == 256, "product is at 256");
static_assert(offsetof(tl_usb_device_info, manufacturer) == 512, "manufacturer is at 512");
static_assert(offsetof(tl_usb_device_info, pid) == 768, "pid is at 768");
static_assert(offsetof(tl_usb_device_info, vid) == 770, "vid is at 770");

/*
 * Lists the attached printers of the vendor `vid` without opening them.
 * Stores an array and its count; without printers, or on an error, NULL and 0. The array belongs to the
 * library and stays valid until the calling thread lists again or ends. Callers do not release it.
 */
TL_USB_API int32_t tl_usb_get_devicelist_by_vid(int32_t vid, tl_usb_device_info **list, int32_t *count);

/*
 * Asks the printer named by `uri` for its status, also while a handle to it is open: a JSON object with the
 * integer "printer_status". On success stores a text that the caller has to release with free. Otherwise
 * *text stays as it was; what it pointed to is never read or released. Callers pass 0, 2 and 1 for `first`,
 * `second` and `third`.
 */
TL_USB_API int32_t tl_usb_get_printer_info(const char *uri, int32_t first, int32_t second, int32_t timeout_ms,
                                           int32_t third, char **text);

/*
 * Opens the printer named by `uri`; callers pass 2 for `mode`. Stores a handle, or NULL on an error.
 * A printer has at most one open handle: opening it again retires the earlier one, which then behaves like a
 * closed handle. So a caller that never closes its handles holds at most one per printer.
 */
TL_USB_API int32_t tl_usb_get_device_handle(const char *uri, int32_t mode, void **handle);

/*
 * Writes `write_length` bytes, then reads one transfer; either may be left out.
 * No write: `write_buffer` NULL and `write_length` 0. No read: `read_buffer` and `read_length` both NULL.
 * `*read_length` is the capacity of `read_buffer`, above 0, before the call, and the number of bytes read
 * after it (0 for an empty transfer; on a real bus an empty packet does not count as a transfer, so that only
 * data ends the wait); it is 0 after a call that failed in any way, also when the write failed and the read
 * was not tried. A transfer longer than the capacity is cut to it, its rest is lost, and
 * the status is TL_USB_ERROR_OVERFLOW. After TL_USB_ERROR_NO_DEVICE the handle is closed. Callers pass 0 for
 * `reserved`.
 * The time-out bounds the whole write, and then the read. A printer that never stops sending is not read for
 * ever: once a handle has been read for two time-outs of at least a second each (before the first write: for
 * 5 seconds, or one time-out if that is longer), or 1000 times, without a read that found nothing in time,
 * reads fail with TL_USB_ERROR_ENDLESS until the next write. So draining a printer, writing to it and reading
 * its answers takes at most 5 seconds and three time-outs.
 */
TL_USB_API int32_t tl_usb_data_transfer_by_handle(void *handle, const uint8_t *write_buffer,
                                                  uint32_t write_length, int32_t timeout_ms,
                                                  uint8_t *read_buffer, int32_t *read_length,
                                                  uintptr_t reserved);

/* Closes a handle. Any value that is not an open handle gives TL_USB_ERROR_INVALID and does no harm. */
TL_USB_API int32_t tl_usb_close_device_handle(void *handle);

#ifdef __cplusplus
}
#endif

#endif
