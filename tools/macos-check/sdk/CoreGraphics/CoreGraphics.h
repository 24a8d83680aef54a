#pragma once

#include <CoreFoundation/CoreFoundation.h>

typedef struct CGColor* CGColorRef;
