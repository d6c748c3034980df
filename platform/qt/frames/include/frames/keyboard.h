// Keys: from the toolkit to messages, accelerators, and back.
#pragma once

#include "user/keys.h"

#include <QObject>

namespace platform {

// Takes the keys of our top-level windows and their controls out of the toolkit and queues them as
// messages, so that accelerators see them first. Keys of dialogs and open menus pass.
class KeyFilter : public QObject {
  public:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    LastRelease last_release_;
};

} // namespace platform
