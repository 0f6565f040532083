/* The interface's header has to be C: this file would not compile otherwise. */
#include "corvantine_driver.h"

/* Sizes of what crosses the interface, for a test in C++ to compare. */
int32_t header_in_c_sizes(int32_t which);
int32_t header_in_c_sizes(int32_t which) {
    switch (which) {
    case 0:
        return CORVANTINE_NAME_BYTES;
    case 1:
        return CORVANTINE_ISSUE_BYTES;
    case 2:
        return CORVANTINE_ROW;
    case 3:
        return CORVANTINE_BLOCKS;
    case 4:
        return CORVANTINE_BUFFER;
    case 5:
        return CORVANTINE_FFT_LENGTH;
    case 6:
        return CORVANTINE_TRUE;
    default:
        return CORVANTINE_FALSE;
    }
}
