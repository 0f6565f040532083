#include "controls/colour.h"

#include <algorithm>

Colour Brightened(Colour sample, Colour by) {
    Colour result = 0;
    for (int shift : {0, 8, 16}) {
        result |= std::min<Colour>(((sample >> shift) & 0xFF) + ((by >> shift) & 0xFF), 0xFF) << shift;
    }
    return result;
}
