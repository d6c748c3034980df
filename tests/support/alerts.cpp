#include "tests/support/alerts.h"

#include "platform/user.h"
#include "resources/resource.h"

#include <memory>
#include <utility>

namespace pelmora_test {

namespace {

// Looks for alerts until `over`, each of which it notes and dismisses.
class AlertReader {
  public:
    explicit AlertReader(std::function<void(HWND)> look) : look_(std::move(look)) { watch(); }
    ~AlertReader() { script_.reset(); }
    AlertReader(const AlertReader&) = delete;
    AlertReader& operator=(const AlertReader&) = delete;

    std::vector<std::string> texts;

  private:
    void watch() {
        script_ = std::make_unique<user::Script>([](const std::string&) {});
        script_->await("an alert, for ever", [this] {
            const HWND alert = user::find_window("Dialog");
            if (alert != nullptr && alert != last_) {
                last_ = alert;
                texts.push_back(user::text(alert, IDC_MESSAGE_TEXT));
                if (look_) {
                    look_(alert);
                }
                if (IsWindow(alert)) {
                    user::press(alert, "Return");
                }
            }
            return false;
        });
        script_->start();
    }

    std::function<void(HWND)> look_;
    HWND last_ = nullptr;
    std::unique_ptr<user::Script> script_;
};

} // namespace

std::vector<std::string> alerts_of(const std::function<void()>& action,
                                   const std::function<void(HWND)>& look) {
    AlertReader reader(look);
    action();
    return reader.texts;
}

} // namespace pelmora_test
