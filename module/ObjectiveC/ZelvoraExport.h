#pragma once

/// Marks what the framework exports; everything else in it is hidden.
#define ZELVORA_EXPORT __attribute__((visibility("default")))
