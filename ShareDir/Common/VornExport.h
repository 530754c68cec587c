// Visibility of what crosses the border between the plugin and the core.
#pragma once

// Both the record and the template it is an argument of must carry this: a hidden one of the two hides the shared
// statics of the instantiation, and the core and the plugin would each have their own.
#define VORN_API __attribute__((visibility("default")))
