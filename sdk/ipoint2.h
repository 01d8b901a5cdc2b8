// A point of whole pixels.
#pragma once

struct IPoint2 {
    int x = 0;
    int y = 0;
};
