#include "controls/factory.h"

#include "controls/control_styles.h"
#include "controls/trackbar.h"
#include "controls/updown.h"
#include "resources/resources.h"
#include "user/message_loop.h"

#include <QContextMenuEvent>
#include <QGroupBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>

#include <algorithm>

namespace platform {

namespace {

class ButtonControl : public Control {
  public:
    ButtonControl(HWND parent, int id, QAbstractButton* button) : Control(parent, id, button) {
        // Posted, not sent: the command may open a dialog, and the button's click handler must not
        // last as long as the dialog.
        QObject::connect(button, &QAbstractButton::clicked, button, [this] {
            post_input(Control::parent(), WM_COMMAND,
                       MAKEWPARAM(static_cast<unsigned>(Control::id()), BN_CLICKED),
                       reinterpret_cast<LPARAM>(handle()));
        });
    }
    LRESULT receive(UINT message, WPARAM wparam, LPARAM lparam) override {
        if (message == BM_CLICK) {
            button()->click();
            return 0;
        }
        return Control::receive(message, wparam, lparam);
    }
    QString text() const override { return button()->text(); }
    void set_text(const QString& text) override { button()->setText(text); }

  protected:
    QAbstractButton* button() const { return static_cast<QAbstractButton*>(widget()); }
};

class RadioControl : public ButtonControl {
  public:
    using ButtonControl::ButtonControl;
    bool checked() const override { return button()->isChecked(); }
    void set_checked(bool on) override {
        // Only a click clears the others: a program may leave a group without a checked button.
        button()->group()->setExclusive(false);
        button()->setChecked(on);
        button()->group()->setExclusive(true);
    }
};

// A group box with its title on the frame line. Many styles draw the title above the frame, which
// then starts lower and crosses the first control.
class GroupFrame : public QGroupBox {
  public:
    using QGroupBox::QGroupBox;

  protected:
    void paintEvent(QPaintEvent*) override {
        constexpr int kIndent = 8;
        constexpr int kGap = 3; // on both sides of the title
        constexpr int kFaint = 90;
        const int line = fontMetrics().height();
        const int text = fontMetrics().size(Qt::TextShowMnemonic, title()).width();
        const QRect place(kIndent, 0, text + 2 * kGap, line);
        QPainter painter(this);
        QColor color = palette().color(QPalette::WindowText);
        color.setAlpha(kFaint);
        // Not lines, whose outer half the edge of the widget cuts off on a dense screen.
        const QRect frame = rect().adjusted(0, line / 2, 0, 0);
        for (const QRect& part : QRegion(frame) - frame.adjusted(1, 1, -1, -1) - place) {
            painter.fillRect(part, color);
        }
        style()->drawItemText(&painter, place, Qt::AlignCenter | Qt::TextShowMnemonic, palette(),
                              isEnabled(), title(), QPalette::WindowText);
    }
};

// Accepts only digits from the keyboard; pasted and set texts are not checked. It is used in
// top-level windows, whose accelerators take the clipboard keys, so its context menu shows no
// shortcuts.
class NumberEdit : public QLineEdit {
  public:
    explicit NumberEdit(QWidget* parent) : QLineEdit(parent) {
        setInputMethodHints(Qt::ImhDigitsOnly);
    }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        const QString typed = event->text();
        const bool shortcut = event->modifiers().testFlag(Qt::ControlModifier);
        const bool visible = !typed.isEmpty() && typed.at(0) >= u' ' && typed.at(0) != u'\x7f';
        if (!shortcut && visible && (typed.at(0) < u'0' || typed.at(0) > u'9')) {
            return;
        }
        QLineEdit::keyPressEvent(event);
    }
    void contextMenuEvent(QContextMenuEvent* event) override {
        QMenu* menu = createStandardContextMenu();
        menu->setAttribute(Qt::WA_DeleteOnClose);
        for (QAction* entry : menu->actions()) {
            if (entry->text().contains(u'\t')) {
                entry->setText(entry->text().section(u'\t', 0, 0));
            }
        }
        menu->popup(event->globalPos());
    }
    void inputMethodEvent(QInputMethodEvent* event) override {
        const QString committed = event->commitString();
        const bool digits = std::all_of(committed.begin(), committed.end(),
                                        [](QChar c) { return c >= u'0' && c <= u'9'; });
        if (digits) {
            QLineEdit::inputMethodEvent(event);
        }
    }
};

class EditControl : public Control {
  public:
    using Control::Control;
    QString text() const override { return edit()->text(); }
    void set_text(const QString& text) override { edit()->setText(text); }

  private:
    QLineEdit* edit() const { return static_cast<QLineEdit*>(widget()); }
};

class LabelControl : public Control {
  public:
    using Control::Control;
    QString text() const override { return label()->text(); }
    void set_text(const QString& text) override { label()->setText(text); }

  private:
    QLabel* label() const { return static_cast<QLabel*>(widget()); }
};

// The parent of a new control.
struct Parent {
    HWND window;
    QWidget* widget;
};

// An unknown style would be ignored silently, so it is an error.
void require_styles(const DialogItem& item, std::uint32_t known) {
    if ((item.style & ~(known | kCommonStyles)) != 0) {
        resource_fault("control style of", static_cast<unsigned>(item.id));
    }
}

std::shared_ptr<Control> make_button(const DialogItem& item, const Parent& parent) {
    const QString text = to_qstring(item.text.text);
    require_styles(item, 0xF);
    switch (item.style & 0xFU) {
    case kPushButton:
    case kDefaultPushButton: {
        auto* button = new QPushButton(text, parent.widget);
        button->setDefault((item.style & 0xFU) == kDefaultPushButton);
        return std::make_shared<ButtonControl>(parent.window, item.id, button);
    }
    case kAutoRadioButton:
        return std::make_shared<RadioControl>(parent.window, item.id,
                                              new QRadioButton(text, parent.widget));
    case kGroupBox:
        return std::make_shared<Control>(parent.window, item.id,
                                         new GroupFrame(text, parent.widget));
    default:
        resource_fault("button kind of", static_cast<unsigned>(item.id));
    }
}

std::shared_ptr<Control> make_edit(const DialogItem& item, const Parent& parent) {
    require_styles(item, kEditAutoScroll | kEditNumber);
    const bool number = (item.style & kEditNumber) != 0;
    auto* edit = number ? new NumberEdit(parent.widget) : new QLineEdit(parent.widget);
    edit->setText(to_qstring(item.text.text));
    edit->setFrame((item.style & kBorder) != 0);
    return std::make_shared<EditControl>(parent.window, item.id, edit);
}

std::shared_ptr<Control> make_static(const DialogItem& item, const Parent& parent) {
    require_styles(item, kStaticKind | kStaticNoPrefix | kStaticSunken);
    auto* label = new QLabel(parent.widget);
    label->setTextFormat(Qt::PlainText); // no mark-up
    Qt::Alignment alignment = Qt::AlignTop | Qt::AlignLeft;
    switch (item.style & kStaticKind) {
    case kStaticLeft:
        break;
    case kStaticCenter:
        alignment = Qt::AlignTop | Qt::AlignHCenter;
        break;
    case kStaticRight:
        alignment = Qt::AlignTop | Qt::AlignRight;
        break;
    case kStaticIcon: {
        const QIcon* icon = load_icon(item.text.number);
        if (icon == nullptr) {
            resource_fault("icon", item.text.number);
        }
        label->setPixmap(icon->pixmap(32, 32));
        break;
    }
    default:
        resource_fault("static kind of", static_cast<unsigned>(item.id));
    }
    label->setAlignment(alignment);
    label->setWordWrap((item.style & kStaticKind) != kStaticRight);
    if ((item.style & kStaticSunken) != 0) {
        label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    }
    if ((item.style & kStaticKind) != kStaticIcon) {
        label->setText(to_qstring(item.text.text));
    }
    return std::make_shared<LabelControl>(parent.window, item.id, label);
}

std::shared_ptr<Control> make_by_class(const DialogItem& item, const Parent& parent) {
    switch (item.window_class.number) {
    case kButtonClass:
        return make_button(item, parent);
    case kEditClass:
        return make_edit(item, parent);
    case kStaticClass:
        return make_static(item, parent);
    default:
        break;
    }
    const QString name = to_qstring(item.window_class.text).toLower();
    if (name == QLatin1String("msctls_trackbar32")) {
        require_styles(item, kTrackbarAutoTicks | kTrackbarTooltips);
        return std::make_shared<TrackbarControl>(parent.window, item.id, item.style, parent.widget);
    }
    if (name == QLatin1String("msctls_updown32")) {
        require_styles(item, kUpDownArrowKeys);
        return std::make_shared<UpDownControl>(parent.window, item.id, item.style, parent.widget);
    }
    resource_fault("control class of", static_cast<unsigned>(item.id));
}

// Sets the position and the state of a control's widget.
void set_up(QWidget* widget, const DialogItem& item, const QRect& area) {
    // An icon's area has a position but no size.
    widget->setGeometry(area.isEmpty() ? QRect(area.topLeft(), widget->sizeHint()) : area);
    widget->setVisible((item.style & kVisible) != 0);
    widget->setEnabled((item.style & kDisabled) == 0);
}

// For screen readers a label names the field or slider that follows it, and a field its arrows.
void name_after(QWidget* before, QWidget* widget) {
    auto* label = qobject_cast<QLabel*>(before);
    const bool field =
        qobject_cast<QLineEdit*>(widget) != nullptr || qobject_cast<QSlider*>(widget) != nullptr;
    if (field && label != nullptr) {
        label->setBuddy(widget);
        widget->setAccessibleName(label->text());
    }
    auto* arrows = dynamic_cast<UpDownWidget*>(widget);
    if (arrows != nullptr && qobject_cast<QLineEdit*>(before) != nullptr) {
        arrows->name_after(before->accessibleName());
    }
}

} // namespace

Control* add_control(Controls& controls, const DialogItem& item, const QRect& area, HWND parent) {
    const std::shared_ptr<Control> control = make_by_class(item, {parent, controls.holder()});
    set_up(control->widget(), item, area);
    if (!controls.all().empty()) {
        name_after(controls.all().back()->widget(), control->widget());
    }
    controls.add(control, (item.style & kGroup) != 0);
    return control.get();
}

} // namespace platform
