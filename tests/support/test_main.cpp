#include "platform/ui/application.h"

#include <gtest/gtest.h>
