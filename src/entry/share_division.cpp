#include "entry/share_division.h"
