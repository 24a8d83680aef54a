#pragma once

#include "app/FeatureHooks.h"

namespace morla::app {

/// Puts the three key chords at their places in the start-up.
void installShortcuts(FeatureHooks& hooks);

}  // namespace morla::app
