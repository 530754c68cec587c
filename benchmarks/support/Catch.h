// Catch2 with its benchmarking. Every file of the benchmarks includes it through here.
#pragma once

#define CATCH_CONFIG_ENABLE_BENCHMARKING
#include <catch2/catch.hpp>
