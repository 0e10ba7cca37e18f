#pragma once

#include <glib-object.h>

namespace quillmark {

// Releases what GLib hands out, for std::unique_ptr.
struct Free {
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(char* text) const { g_free(text); }
    void operator()(char** list) const { g_strfreev(list); }
    void operator()(gpointer object) const { g_object_unref(object); }
};

} // namespace quillmark
