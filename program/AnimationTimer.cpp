#include "program/AnimationTimer.h"

#include <glib.h>

#include <algorithm>
#include <utility>

AnimationTimer::AnimationTimer(double intervalSeconds, std::function<void()> tick)
    : mTick(std::move(tick)),
      mSource(g_timeout_add(
          static_cast<guint>(std::max(intervalSeconds * 1000, 1.0)),
          [](gpointer self) -> gboolean {
              static_cast<AnimationTimer*>(self)->mTick();
              return G_SOURCE_CONTINUE;
          },
          this)) {}

AnimationTimer::~AnimationTimer() { g_source_remove(mSource); }
