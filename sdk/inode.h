// A node of the scene.
#pragma once

#include "ref.h"

class INode : public ReferenceTarget {};
