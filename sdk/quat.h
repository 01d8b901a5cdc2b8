// A rotation.
#pragma once

class Quat {
  public:
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
    float w = 1.0F;
};
