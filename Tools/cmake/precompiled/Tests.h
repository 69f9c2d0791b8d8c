// The headers that most tests include.
#pragma once

#include "Code.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
