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

__attribute__((visibility("default"))) void vd_ui_free(char* text) { g_free(text); }

}  // extern "C"

#endif  // VD_UI_GTK_MODULE
