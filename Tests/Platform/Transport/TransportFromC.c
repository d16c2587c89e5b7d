/* Reads the identity of the one attached printer in C, field by field. */
#include "Platform/Transport/zkcomtl.h"

#include <string.h>

int from_c_finds(int32_t vid, uint16_t pid, const char *serial, const char *product,
                 const char *manufacturer);

int from_c_finds(int32_t vid, uint16_t pid, const char *serial, const char *product,
                 const char *manufacturer) {
    tl_usb_device_info *list = NULL;
    int32_t count = 0;
    int found = 0;
    if (tl_usb_get_devicelist_by_vid(vid, &list, &count) == TL_USB_OK && count == 1) {
        found = list->vid == vid && list->pid == pid && strcmp(list->serial, serial) == 0 &&
                strcmp(list->product, product) == 0 && strcmp(list->manufacturer, manufacturer) == 0;
    }
    return found;
}
