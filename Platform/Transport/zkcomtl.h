/*
 * The C interface of the USB transport library, libzkcomtl.so.1: finds the printers of one vendor, asks one
 * for its status, and moves bytes to and from one. Several libraries implement it under the one name; a
 * program is linked to the name and cannot tell which it has.
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
 * wait for a call in progress with the same printer on another thread. A handle belongs to no thread. When
 * the process ends by exit or quick_exit, from whatever thread, calls in progress are cancelled (on
 * quick_exit they do not return any more) and every printer is given back to the kernel. Units: every
 * time-out is in milliseconds; below 1 it counts as 1. Text: zero-terminated UTF-8. Texts given to a function
 * are not kept. Errors: every function returns TL_USB_OK or one of the other values of tl_usb_status. No
 * function raises. Which printer: a URI names the attached printer whose manufacturer, product and serial
 * number it tells, all three and exactly.
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
    TL_USB_ERROR_TIMEOUT = -5,   /* the printer took not all, or sent nothing, within the time-out */
    TL_USB_ERROR_IO = -6,        /* the transfer failed on the wire or in the printer */
    TL_USB_ERROR_OVERFLOW = -7,  /* the printer sent a transfer longer than the read buffer */
    TL_USB_ERROR_NO_MEMORY = -8,
    TL_USB_ERROR_STALL = -9,      /* the printer refused the transfer; the next one may succeed */
    TL_USB_ERROR_CANCELLED = -10, /* the handle was closed or retired, or the library ended, in the call */
    TL_USB_ERROR_ENDLESS = -11,   /* the printer does not stop sending */
    TL_USB_ERROR_AMBIGUOUS = -12  /* several attached printers are called what the URI says */
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
 * Lists the attached printers of the vendor `vid`. Opens none of them.
 * Stores an array and its count; with no printer, or on an error, NULL and 0. The array belongs to the
 * library and stays valid until the calling thread lists again or ends: nobody releases it.
 */
TL_USB_API int32_t tl_usb_get_devicelist_by_vid(int32_t vid, tl_usb_device_info **list, int32_t *count);

/*
 * Asks the printer named by `uri` for its status, also while a handle to it is open: a JSON object with the
 * integer "printer_status". On success stores a text from malloc that belongs to the caller, who releases it
 * with free. Otherwise *text is left as it was; what it pointed to is never read or released. Callers pass 0,
 * 2 and 1 for `first`, `second` and `third`.
 */
TL_USB_API int32_t tl_usb_get_printer_info(const char *uri, int32_t first, int32_t second, int32_t timeout_ms,
                                           int32_t third, char **text);

/*
 * Opens the printer named by `uri`; callers pass 2 for `mode`. Stores a handle, or NULL on an error.
 * A printer has one open handle at most: opening it again retires the earlier one, which then behaves as a
 * closed handle. So a caller that never closes its handles holds no more than one a printer.
 */
TL_USB_API int32_t tl_usb_get_device_handle(const char *uri, int32_t mode, void **handle);

/*
 * Writes `write_length` bytes, then reads one transfer; either may be left out.
 * No write: `write_buffer` NULL and `write_length` 0. No read: `read_buffer` and `read_length` both NULL.
 * `*read_length` is the capacity of `read_buffer`, above 0, before the call, and the number of bytes read
 * after it (0 for an empty transfer; on a real bus an empty packet ends a transfer and is none itself, so
 * that nothing but data ends the wait); it is 0 after a call that failed in any way, also when the write
 * failed and the read was not tried. A transfer longer than the capacity is cut to it, its rest is lost, and
 * the status is TL_USB_ERROR_OVERFLOW. After TL_USB_ERROR_NO_DEVICE the handle is closed. Callers pass 0 for
 * `reserved`.
 * The time-out bounds the whole write, and then the read. A printer that never stops sending is not read for
 * ever: reads of a handle fail with TL_USB_ERROR_ENDLESS until it is written to again, once it was read for
 * two time-outs (each of a second at least; 5 seconds, or one time-out if that is longer, when it was not
 * written to yet), or 1000 times, without a read that found nothing within its time-out. So draining a
 * printer, writing to it and reading its answers takes 5 seconds and three time-outs at most.
 */
TL_USB_API int32_t tl_usb_data_transfer_by_handle(void *handle, const uint8_t *write_buffer,
                                                  uint32_t write_length, int32_t timeout_ms,
                                                  uint8_t *read_buffer, int32_t *read_length,
                                                  uintptr_t reserved);

/* Closes a handle. A handle that is not open gives TL_USB_ERROR_INVALID and does no harm. */
TL_USB_API int32_t tl_usb_close_device_handle(void *handle);

#ifdef __cplusplus
}
#endif

#endif
