#include "platform/database/sql/catalog.h"
