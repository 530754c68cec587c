// Marks what the host runtime library shows to others; its other symbols are hidden.
#pragma once

#define VORN_HOST_EXPORT __attribute__((visibility("default")))
