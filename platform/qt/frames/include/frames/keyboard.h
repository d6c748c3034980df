// Translates the toolkit's key events into messages and handles accelerators.
#pragma once

#include "user/keys.h"

#include <QObject>

namespace platform {

// An event filter that takes the key events of top-level windows and their controls and queues them
// as messages, so that accelerators see them first. Keys of dialogs and open menus pass through.
class KeyFilter : public QObject {
  public:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    LastRelease last_release_;
};

} // namespace platform
