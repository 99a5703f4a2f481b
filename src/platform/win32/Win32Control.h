#pragma once

#include "platform/win32/Win32Handles.h"
#include "window/Controls.h"
#include "window/Shown.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

struct tagNMHDR;

namespace tarnwick {

class Win32Window;

// The real window of one control: made from the control's row, brought in line with its fields, and the source of its
// events.
class Win32Control {
public:
    // nullptr for kinds that the window itself paints.
    static std::unique_ptr<Win32Control> Make(Win32Window& owner, Control& model, HWND__* parent, int number);
    virtual ~Win32Control() = default;
    Win32Control(const Win32Control&) = delete;
    Win32Control& operator=(const Win32Control&) = delete;

    Control& Model() const { return model_; }
    HWND__* Real() const { return real_; }

    // Takes its place and its font at this DPI.
    void Place(int dpi);
    void Sync();

    // Sets the colours it paints in; the brush of its background.
    HBRUSH__* PrepareColors(HDC__* surface) const;

    virtual void OnCommand(unsigned /*notice*/) {}
    virtual std::intptr_t OnNotify(tagNMHDR& /*notice*/) { return 0; }
    // What it has posted to itself.
    virtual void OnPosted(std::intptr_t /*what*/) {}
    // The caption that the user saw when the message that is being handled was on its way.
    virtual const std::string& SeenCaption() const { return model_.Caption; }
    virtual void ShowColors();
    // The ground that ControlDefault means where it isn't that of what the control lies on: of boxes for text and
    // lists.
    virtual bool HasOwnGround() const { return false; }
    // The menu key.
    virtual void OpenMenu() {}

protected:
    struct Type {
        const wchar_t* Class;
        unsigned long Style;
        unsigned long ExtendedStyle = 0;
    };
    Win32Control(Win32Window& owner, Control& model, HWND__* parent, int number, const Type& type);

    // The text, value, rows... as they are in the model.
    virtual void SyncContent() = 0;
    // After all else has been written.
    virtual void ShowLast() {}
    // What depends on the display beside place and font.
    virtual void Scale(int /*dpi*/) {}
    // A control that shows nothing must not hide what it lies over.
    virtual bool IsEmpty() const { return false; }

    // Shows the text if the last one was another. `literal`: "&" is no access key.
    void ShowText(const std::string& text, bool literal = false);
    std::intptr_t Send(unsigned message, std::uintptr_t first = 0, std::intptr_t second = 0) const;
    // A message to itself, handled from the message loop.
    void Post(std::intptr_t what) const;
    Win32Window& Owner() const { return owner_; }

private:
    void ShowFont();

    Win32Window& owner_;
    Control& model_;
    HWND__* real_ = nullptr;
    int dpi_ = 0;

    // As last shown.
    Shown<std::string> text_{{}};
    Shown<tarnwick::Font> font_;
    Shown<std::pair<Color, Color>> colors_; // of the text and of the ground
    Shown<bool> visible_{false};
    Shown<bool> enabled_{true};
};

} // namespace tarnwick
