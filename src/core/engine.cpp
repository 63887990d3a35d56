#include "core/engine.h"

Engine engine;
