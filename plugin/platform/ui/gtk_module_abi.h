// The plain C interface between the plug-in and its GTK module (Resources/ui-gtk.so). The core
// never links GTK: it loads the module only when a dialog must be shown on a display, so that the
// plug-in starts fast, and starts at all, on a server without GTK.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

// Raised whenever a function below changes; the loader refuses a module of another version.
#define VD_UI_MODULE_ABI_VERSION 3

enum VdUiDialogKind { VD_UI_CHOOSE_FOLDER = 0, VD_UI_CHOOSE_FILE = 1, VD_UI_ALERT = 2 };

enum VdUiResult {
    VD_UI_ACCEPTED = 0,     // chosen, or the alert was confirmed
    VD_UI_CANCELLED = 1,    // closed or cancelled by the user
    VD_UI_NO_DISPLAY = 2,   // GTK could not open the display
};

typedef int (*VdUiAbiVersionFn)(void);
// prompt and startFolder are UTF-8 (either may be empty). On VD_UI_ACCEPTED for a chooser,
// *chosenPath receives a path that the caller gives back with VdUiFreeFn.
typedef int (*VdUiShowDialogFn)(int kind, const char* prompt, const char* startFolder, char** chosenPath);
typedef void (*VdUiFreeFn)(char* text);

// One pop-up menu of a settings form. Every text is UTF-8; selected is the choice shown first, and
// on VD_UI_ACCEPTED the module writes the chosen one back into it.
typedef struct VdUiFormControl {
    const char* label;
    const char* const* choiceLabels;
    int choiceCount;  // at least 1
    int selected;     // 0 .. choiceCount - 1
} VdUiFormControl;

typedef int (*VdUiShowFormFn)(const char* title, VdUiFormControl* controls, int controlCount);

// Whether a mouse button is held down now: 1 down, 0 up, -1 when the display cannot be asked.
typedef int (*VdUiMouseButtonDownFn)(void);

#define VD_UI_ABI_VERSION_SYMBOL "vd_ui_abi_version"
#define VD_UI_SHOW_DIALOG_SYMBOL "vd_ui_show_dialog"
#define VD_UI_FREE_SYMBOL "vd_ui_free"
#define VD_UI_SHOW_FORM_SYMBOL "vd_ui_show_form"
#define VD_UI_MOUSE_BUTTON_DOWN_SYMBOL "vd_ui_mouse_button_down"

#ifdef __cplusplus
}
#endif
