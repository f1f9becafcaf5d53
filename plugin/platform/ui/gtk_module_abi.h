// The plain C interface between the plug-in and its GTK module (Resources/ui-gtk.so). The core
// never links GTK: it loads the module only when a dialog must be shown on a display, so that the
// plug-in starts fast, and starts at all, on a server without GTK.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

// Raised whenever a function below changes; the loader refuses a module of another version.
#define VD_UI_MODULE_ABI_VERSION 4

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

// An effect's form: a slider or a colour button per parameter, above them a preview the plug-in
// draws again whenever a control moves. value is the control's start and, on VD_UI_ACCEPTED, what
// was chosen; a colour's value is 0xRRGGBB.
enum VdUiEffectControlKind { VD_UI_SLIDER = 0, VD_UI_COLOUR = 1 };

typedef struct VdUiEffectControl {
    const char* label;
    int kind;
    double minimum, maximum, step;  // a slider's range and step (its digits follow the step)
    double value;
} VdUiEffectControl;

// 8-bit RGB rows without padding, owned by the plug-in until its next call.
typedef struct VdUiPreviewFrame {
    int width, height;
    const unsigned char* rgb;
} VdUiPreviewFrame;

// Draws the preview for the controls' values: 0 and the frame, or non-zero when there is none.
typedef int (*VdUiRenderPreviewFn)(void* context, const double* values, int count, VdUiPreviewFrame* frame);

// render may be NULL: the form then has no preview.
typedef int (*VdUiShowEffectFormFn)(const char* title, VdUiEffectControl* controls, int controlCount,
                                    VdUiRenderPreviewFn render, void* context);

#define VD_UI_ABI_VERSION_SYMBOL "vd_ui_abi_version"
#define VD_UI_SHOW_DIALOG_SYMBOL "vd_ui_show_dialog"
#define VD_UI_FREE_SYMBOL "vd_ui_free"
#define VD_UI_SHOW_FORM_SYMBOL "vd_ui_show_form"
#define VD_UI_MOUSE_BUTTON_DOWN_SYMBOL "vd_ui_mouse_button_down"
#define VD_UI_SHOW_EFFECT_FORM_SYMBOL "vd_ui_show_effect_form"

#ifdef __cplusplus
}
#endif
