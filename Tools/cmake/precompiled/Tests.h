// The same for tests.
#pragma once

#include "Code.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
