// What nearly every test reads, compiled once. Sources include what they use all the same.
#include "../src/precompiled.h"

#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
