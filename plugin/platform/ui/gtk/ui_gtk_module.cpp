// The GTK side of the plug-in's dialogs, built as Resources/ui-gtk.so and loaded only when a dialog
// must be shown on a display. It is the one place that includes GTK.
//
// Only the module's own target defines VD_UI_GTK_MODULE: the plug-in's source glob also finds this
// file, and there it must compile to nothing, since the core never links GTK.
#ifdef VD_UI_GTK_MODULE

#include <gtk/gtk.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "platform/ui/gtk_module_abi.h"

namespace {

struct WidgetDestroyer {
    void operator()(GtkWidget* widget) const noexcept { gtk_widget_destroy(widget); }
};
using OwnedWidget = std::unique_ptr<GtkWidget, WidgetDestroyer>;

struct GFreer {
    void operator()(char* text) const noexcept { g_free(text); }
};
using OwnedGText = std::unique_ptr<char, GFreer>;

// The window is gone from the screen only once GTK has handled the events its destruction queued.
void Settle() {
    while (gtk_events_pending()) gtk_main_iteration();
}

// Where a settings form keeps its grid of controls on the dialog.
constexpr const char* kFormGridKey = "vd-form-grid";

bool Started() {
    static const bool started = gtk_init_check(nullptr, nullptr);
    return started;
}

#ifdef VD_UI_GTK_SELF_CANCEL
// The test build cancels its own dialog once it is on the screen, and tells the test what it
// showed, so a test can watch the real chooser without a person or an input tool.
gboolean CancelShownDialog(gpointer data) {
    GtkWidget* dialog = GTK_WIDGET(data);
    if (const char* report = std::getenv("VD_UI_GTK_TEST_REPORT")) {
        if (FILE* out = std::fopen(report, "w")) {
            const bool chooser = GTK_IS_FILE_CHOOSER(dialog);
            OwnedGText folder(chooser ? gtk_file_chooser_get_current_folder(GTK_FILE_CHOOSER(dialog)) : nullptr);
            std::fprintf(out, "shown=%d\ntitle=%s\nfolder=%s\nchooser=%d\n", gtk_widget_get_mapped(dialog) ? 1 : 0,
                         gtk_window_get_title(GTK_WINDOW(dialog)), folder ? folder.get() : "",
                         chooser && gtk_file_chooser_get_action(GTK_FILE_CHOOSER(dialog)) ==
                                        GTK_FILE_CHOOSER_ACTION_SELECT_FOLDER
                             ? 1
                             : 0);
            // A settings form: each row of its grid is a control's label and its pop-up menu.
            if (auto* grid = static_cast<GtkGrid*>(g_object_get_data(G_OBJECT(dialog), kFormGridKey))) {
                for (int row = 0; GtkWidget* label = gtk_grid_get_child_at(grid, 0, row); ++row) {
                    GtkWidget* menu = gtk_grid_get_child_at(grid, 1, row);
                    OwnedGText active(menu ? gtk_combo_box_text_get_active_text(GTK_COMBO_BOX_TEXT(menu)) : nullptr);
                    std::fprintf(out, "control=%s:%s\n", gtk_label_get_text(GTK_LABEL(label)),
                                 active ? active.get() : "");
                }
            }
            std::fclose(out);
        }
    }
    gtk_dialog_response(GTK_DIALOG(dialog), GTK_RESPONSE_CANCEL);
    return G_SOURCE_REMOVE;
}

void ArmSelfCancel(GtkWidget* dialog, gpointer) { g_timeout_add(300, CancelShownDialog, dialog); }
#endif

GtkWidget* NewDialog(int kind, const char* prompt, const char* startFolder) {
    if (kind == VD_UI_ALERT) {
        GtkWidget* alert = gtk_message_dialog_new(nullptr, GTK_DIALOG_MODAL, GTK_MESSAGE_INFO, GTK_BUTTONS_OK_CANCEL,
                                                  "%s", prompt);
        gtk_window_set_title(GTK_WINDOW(alert), "Vandrel");
        return alert;
    }
    const bool folder = kind == VD_UI_CHOOSE_FOLDER;
    const char* title = prompt[0] ? prompt : (folder ? "Choose a Folder" : "Choose a File");
    GtkWidget* chooser = gtk_file_chooser_dialog_new(
        title, nullptr, folder ? GTK_FILE_CHOOSER_ACTION_SELECT_FOLDER : GTK_FILE_CHOOSER_ACTION_OPEN, "_Cancel",
        GTK_RESPONSE_CANCEL, "_Choose", GTK_RESPONSE_ACCEPT, nullptr);
    gtk_file_chooser_set_select_multiple(GTK_FILE_CHOOSER(chooser), FALSE);
    gtk_file_chooser_set_local_only(GTK_FILE_CHOOSER(chooser), TRUE);
    if (startFolder[0]) gtk_file_chooser_set_current_folder(GTK_FILE_CHOOSER(chooser), startFolder);
    return chooser;
}

// A grid of one label and one pop-up menu per control, below the title; OK is the default button.
GtkWidget* NewForm(const char* title, const VdUiFormControl* controls, int controlCount,
                   std::vector<GtkComboBox*>& menus) {
    GtkWidget* dialog = gtk_dialog_new_with_buttons(title, nullptr, GTK_DIALOG_MODAL, "_Cancel", GTK_RESPONSE_CANCEL,
                                                    "_OK", GTK_RESPONSE_OK, nullptr);
    gtk_dialog_set_default_response(GTK_DIALOG(dialog), GTK_RESPONSE_OK);
    gtk_window_set_resizable(GTK_WINDOW(dialog), FALSE);
    GtkWidget* grid = gtk_grid_new();
    gtk_grid_set_row_spacing(GTK_GRID(grid), 8);
    gtk_grid_set_column_spacing(GTK_GRID(grid), 12);
    gtk_container_set_border_width(GTK_CONTAINER(grid), 12);
    for (int row = 0; row < controlCount; ++row) {
        const VdUiFormControl& control = controls[row];
        GtkWidget* label = gtk_label_new(control.label ? control.label : "");
        gtk_label_set_xalign(GTK_LABEL(label), 1.0f);
        GtkWidget* menu = gtk_combo_box_text_new();
        for (int i = 0; i < control.choiceCount; ++i) {
            gtk_combo_box_text_append_text(GTK_COMBO_BOX_TEXT(menu), control.choiceLabels[i] ? control.choiceLabels[i] : "");
        }
        gtk_combo_box_set_active(GTK_COMBO_BOX(menu), control.selected);
        gtk_label_set_mnemonic_widget(GTK_LABEL(label), menu);
        gtk_widget_set_hexpand(menu, TRUE);
        gtk_grid_attach(GTK_GRID(grid), label, 0, row, 1, 1);
        gtk_grid_attach(GTK_GRID(grid), menu, 1, row, 1, 1);
        menus.push_back(GTK_COMBO_BOX(menu));
    }
    gtk_box_pack_start(GTK_BOX(gtk_dialog_get_content_area(GTK_DIALOG(dialog))), grid, TRUE, TRUE, 0);
    gtk_widget_show_all(grid);
    g_object_set_data(G_OBJECT(dialog), kFormGridKey, grid);
    return dialog;
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) int vd_ui_abi_version(void) { return VD_UI_MODULE_ABI_VERSION; }

__attribute__((visibility("default"))) int vd_ui_show_dialog(int kind, const char* prompt, const char* startFolder,
                                                             char** chosenPath) {
    *chosenPath = nullptr;
    if (!Started()) return VD_UI_NO_DISPLAY;
    OwnedWidget dialog(NewDialog(kind, prompt ? prompt : "", startFolder ? startFolder : ""));
#ifdef VD_UI_GTK_SELF_CANCEL
    g_signal_connect(dialog.get(), "map", G_CALLBACK(ArmSelfCancel), nullptr);
#endif
    const int response = gtk_dialog_run(GTK_DIALOG(dialog.get()));
    int result = VD_UI_CANCELLED;
    if (response == GTK_RESPONSE_ACCEPT || response == GTK_RESPONSE_OK) {
        result = VD_UI_ACCEPTED;
        if (kind != VD_UI_ALERT) {
            OwnedGText file(gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(dialog.get())));
            if (!file) result = VD_UI_CANCELLED;
            else *chosenPath = file.release();
        }
    }
    dialog.reset();
    Settle();
    return result;
}

__attribute__((visibility("default"))) int vd_ui_show_form(const char* title, VdUiFormControl* controls,
                                                           int controlCount) {
    if (!Started()) return VD_UI_NO_DISPLAY;
    std::vector<GtkComboBox*> menus;
    OwnedWidget dialog(NewForm(title ? title : "", controls, controlCount, menus));
#ifdef VD_UI_GTK_SELF_CANCEL
    g_signal_connect(dialog.get(), "map", G_CALLBACK(ArmSelfCancel), nullptr);
#endif
    const int response = gtk_dialog_run(GTK_DIALOG(dialog.get()));
    int result = VD_UI_CANCELLED;
    if (response == GTK_RESPONSE_OK) {
        result = VD_UI_ACCEPTED;
        for (int row = 0; row < controlCount; ++row) {
            const int active = gtk_combo_box_get_active(menus[row]);
            if (active >= 0) controls[row].selected = active;
        }
    }
    dialog.reset();
    Settle();
    return result;
}

__attribute__((visibility("default"))) void vd_ui_free(char* text) { g_free(text); }

__attribute__((visibility("default"))) int vd_ui_mouse_button_down(void) {
    if (!Started()) return -1;
    GdkDisplay* display = gdk_display_get_default();
    GdkSeat* seat = display ? gdk_display_get_default_seat(display) : nullptr;
    GdkDevice* pointer = seat ? gdk_seat_get_pointer(seat) : nullptr;
    GdkWindow* root = gdk_get_default_root_window();
    if (!pointer || !root) return -1;
    // The pointer's state as the display server knows it now (a round trip, not a queued event),
    // so a press that no window of ours received still counts.
    GdkModifierType state{};
    gdk_window_get_device_position(root, pointer, nullptr, nullptr, &state);
    constexpr auto kButtons = GDK_BUTTON1_MASK | GDK_BUTTON2_MASK | GDK_BUTTON3_MASK | GDK_BUTTON4_MASK | GDK_BUTTON5_MASK;
    return (state & kButtons) ? 1 : 0;
}

}  // extern "C"

#endif  // VD_UI_GTK_MODULE
