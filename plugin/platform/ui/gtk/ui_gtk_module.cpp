// The GTK side of the plug-in's dialogs, built as Resources/ui-gtk.so and loaded only when a dialog
// must be shown on a display. It is the one place that includes GTK.
//
// Only the module's own target defines VD_UI_GTK_MODULE: the plug-in's source glob also finds this
// file, and there it must compile to nothing, since the core never links GTK.
#ifdef VD_UI_GTK_MODULE

#include <gtk/gtk.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
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
// Where an effect's form keeps its grid of sliders and colour buttons, and its preview image.
constexpr const char* kEffectGridKey = "vd-effect-grid";
constexpr const char* kEffectPreviewKey = "vd-effect-preview";

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
            if (auto* grid = static_cast<GtkGrid*>(g_object_get_data(G_OBJECT(dialog), kEffectGridKey))) {
                for (int row = 0; GtkWidget* label = gtk_grid_get_child_at(grid, 0, row); ++row) {
                    GtkWidget* control = gtk_grid_get_child_at(grid, 1, row);
                    if (GTK_IS_RANGE(control))
                        std::fprintf(out, "slider=%s:%g\n", gtk_label_get_text(GTK_LABEL(label)),
                                     gtk_range_get_value(GTK_RANGE(control)));
                    else
                        std::fprintf(out, "colour=%s\n", gtk_label_get_text(GTK_LABEL(label)));
                }
            }
            if (auto* image = static_cast<GtkImage*>(g_object_get_data(G_OBJECT(dialog), kEffectPreviewKey))) {
                GdkPixbuf* shown =
                    gtk_image_get_storage_type(image) == GTK_IMAGE_PIXBUF ? gtk_image_get_pixbuf(image) : nullptr;
                std::fprintf(out, "preview=%dx%d\n", shown ? gdk_pixbuf_get_width(shown) : 0,
                             shown ? gdk_pixbuf_get_height(shown) : 0);
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

// An effect's form while it is shown: its controls, and the preview drawn again (once, a moment
// after the last change) whenever one of them moves.
struct EffectForm {
    const VdUiEffectControl* controls = nullptr;
    int controlCount = 0;
    std::vector<GtkWidget*> widgets;  // a GtkScale or a GtkColorButton per control
    VdUiRenderPreviewFn render = nullptr;
    void* context = nullptr;
    GtkImage* preview = nullptr;
    guint pending = 0;  // the timeout that will redraw the preview, or 0
};

double ColourValue(GtkWidget* button) {
    GdkRGBA rgba{};
    gtk_color_chooser_get_rgba(GTK_COLOR_CHOOSER(button), &rgba);
    const auto channel = [](double v) { return unsigned(v * 255.0 + 0.5) & 0xFFu; };
    return double(channel(rgba.red) << 16 | channel(rgba.green) << 8 | channel(rgba.blue));
}

std::vector<double> EffectValues(const EffectForm& form) {
    std::vector<double> values;
    for (int i = 0; i < form.controlCount; ++i) {
        GtkWidget* w = form.widgets[size_t(i)];
        values.push_back(form.controls[i].kind == VD_UI_COLOUR ? ColourValue(w) : gtk_range_get_value(GTK_RANGE(w)));
    }
    return values;
}

void DrawPreview(EffectForm& form) {
    if (!form.render) return;
    const std::vector<double> values = EffectValues(form);
    VdUiPreviewFrame frame{};
    if (form.render(form.context, values.data(), int(values.size()), &frame) != 0 || !frame.rgb || frame.width <= 0 ||
        frame.height <= 0) {
        gtk_image_clear(form.preview);
        return;
    }
    GdkPixbuf* pixbuf = gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, frame.width, frame.height);
    if (!pixbuf) return;
    const int stride = gdk_pixbuf_get_rowstride(pixbuf);
    guchar* pixels = gdk_pixbuf_get_pixels(pixbuf);
    for (int y = 0; y < frame.height; ++y)
        std::memcpy(pixels + size_t(y) * size_t(stride), frame.rgb + size_t(y) * size_t(frame.width) * 3,
                    size_t(frame.width) * 3);
    gtk_image_set_from_pixbuf(form.preview, pixbuf);
    g_object_unref(pixbuf);
}

gboolean RedrawPreview(gpointer data) {
    auto* form = static_cast<EffectForm*>(data);
    form->pending = 0;
    DrawPreview(*form);
    return G_SOURCE_REMOVE;
}

void ControlMoved(GtkWidget*, gpointer data) {
    auto* form = static_cast<EffectForm*>(data);
    if (form->pending) g_source_remove(form->pending);
    form->pending = g_timeout_add(120, RedrawPreview, form);
}

int Digits(double step) {
    int digits = 0;
    while (digits < 4 && step * std::pow(10.0, digits) < 0.999) ++digits;
    return digits;
}

GtkWidget* NewEffectForm(const char* title, EffectForm& form) {
    GtkWidget* dialog = gtk_dialog_new_with_buttons(title, nullptr, GTK_DIALOG_MODAL, "_Cancel", GTK_RESPONSE_CANCEL,
                                                    "_OK", GTK_RESPONSE_OK, nullptr);
    gtk_dialog_set_default_response(GTK_DIALOG(dialog), GTK_RESPONSE_OK);
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 8);
    gtk_container_set_border_width(GTK_CONTAINER(box), 12);
    if (form.render) {
        GtkWidget* image = gtk_image_new();
        gtk_widget_set_size_request(image, 320, 240);
        form.preview = GTK_IMAGE(image);
        gtk_box_pack_start(GTK_BOX(box), image, TRUE, TRUE, 0);
        g_object_set_data(G_OBJECT(dialog), kEffectPreviewKey, image);
    }
    GtkWidget* grid = gtk_grid_new();
    gtk_grid_set_row_spacing(GTK_GRID(grid), 8);
    gtk_grid_set_column_spacing(GTK_GRID(grid), 12);
    for (int row = 0; row < form.controlCount; ++row) {
        const VdUiEffectControl& control = form.controls[row];
        GtkWidget* label = gtk_label_new(control.label ? control.label : "");
        gtk_label_set_xalign(GTK_LABEL(label), 1.0f);
        GtkWidget* widget = nullptr;
        if (control.kind == VD_UI_COLOUR) {
            const auto value = unsigned(control.value);
            const GdkRGBA rgba{(value >> 16 & 0xFF) / 255.0, (value >> 8 & 0xFF) / 255.0, (value & 0xFF) / 255.0, 1.0};
            widget = gtk_color_button_new_with_rgba(&rgba);
            g_signal_connect(widget, "color-set", G_CALLBACK(ControlMoved), &form);
        } else {
            widget = gtk_scale_new_with_range(GTK_ORIENTATION_HORIZONTAL, control.minimum, control.maximum,
                                              control.step > 0 ? control.step : 0.01);
            gtk_scale_set_digits(GTK_SCALE(widget), Digits(control.step));
            gtk_range_set_value(GTK_RANGE(widget), control.value);
            gtk_widget_set_size_request(widget, 240, -1);
            g_signal_connect(widget, "value-changed", G_CALLBACK(ControlMoved), &form);
        }
        gtk_label_set_mnemonic_widget(GTK_LABEL(label), widget);
        gtk_widget_set_hexpand(widget, TRUE);
        gtk_grid_attach(GTK_GRID(grid), label, 0, row, 1, 1);
        gtk_grid_attach(GTK_GRID(grid), widget, 1, row, 1, 1);
        form.widgets.push_back(widget);
    }
    gtk_box_pack_start(GTK_BOX(box), grid, FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(gtk_dialog_get_content_area(GTK_DIALOG(dialog))), box, TRUE, TRUE, 0);
    gtk_widget_show_all(box);
    g_object_set_data(G_OBJECT(dialog), kEffectGridKey, grid);
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

__attribute__((visibility("default"))) int vd_ui_show_effect_form(const char* title, VdUiEffectControl* controls,
                                                                  int controlCount, VdUiRenderPreviewFn render,
                                                                  void* context) {
    if (!Started()) return VD_UI_NO_DISPLAY;
    EffectForm form;
    form.controls = controls;
    form.controlCount = controlCount;
    form.render = render;
    form.context = context;
    OwnedWidget dialog(NewEffectForm(title ? title : "", form));
    DrawPreview(form);
#ifdef VD_UI_GTK_SELF_CANCEL
    g_signal_connect(dialog.get(), "map", G_CALLBACK(ArmSelfCancel), nullptr);
#endif
    const int response = gtk_dialog_run(GTK_DIALOG(dialog.get()));
    // A redraw still waiting must not fire on a form that is gone.
    if (form.pending) g_source_remove(form.pending);
    form.pending = 0;
    int result = VD_UI_CANCELLED;
    if (response == GTK_RESPONSE_OK) {
        result = VD_UI_ACCEPTED;
        const std::vector<double> values = EffectValues(form);
        for (int i = 0; i < controlCount; ++i) controls[i].value = values[size_t(i)];
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
