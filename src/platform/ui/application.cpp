#include "platform/ui/application.h"
