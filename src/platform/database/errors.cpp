#include "platform/database/errors.h"
