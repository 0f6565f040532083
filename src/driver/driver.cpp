#include "driver/driver.h"
