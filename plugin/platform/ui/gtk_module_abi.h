// The plain C interface between the plug-in and its GTK module (Resources/ui-gtk.so). The core
// never links GTK: it loads the module only when a dialog must be shown on a display, so that the
// plug-in starts fast, and starts at all, on a server without GTK.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

// Raised whenever a function below changes; the loader refuses a module of another version.
#define VD_UI_MODULE_ABI_VERSION 1

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

#define VD_UI_ABI_VERSION_SYMBOL "vd_ui_abi_version"
#define VD_UI_SHOW_DIALOG_SYMBOL "vd_ui_show_dialog"
#define VD_UI_FREE_SYMBOL "vd_ui_free"

#ifdef __cplusplus
}
#endif
