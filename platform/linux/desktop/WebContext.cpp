#include "platform/linux/desktop/WebContext.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "platform/Bundle.h"
#include "platform/linux/Handles.h"
#include "platform/linux/desktop/LostBuses.h"

namespace platform {

namespace {

constexpr char kScheme[] = "bundle";

void refuse(WebKitURISchemeRequest* request, const std::string& name) {
    const ErrorRef error(
        g_error_new(G_FILE_ERROR, G_FILE_ERROR_NOENT, "The bundle has no resource %s", name.c_str()));
    webkit_uri_scheme_request_finish_error(request, error.get());
}

GText mimeType(const std::string& path, const std::string& data) {
    const GText type(g_content_type_guess(path.c_str(), reinterpret_cast<const guchar*>(data.data()),
                                          data.size(), nullptr));
    return GText(g_content_type_get_mime_type(type.get()));
}

// A page comes from a file, so the bundle is another origin to it; this header lets the page load modules.
SoupMessageHeaders* openToPages() {  // given to the caller
    SoupMessageHeaders* headers = soup_message_headers_new(SOUP_MESSAGE_HEADERS_RESPONSE);
    soup_message_headers_append(headers, "Access-Control-Allow-Origin", "*");
    return headers;
}

// bundle:///NAME is the resource NAME.
void serveResource(WebKitURISchemeRequest* request, gpointer) {
    const char* path = webkit_uri_scheme_request_get_path(request);
    const GText name(g_uri_unescape_string(path + std::strspn(path, "/"), nullptr));
    std::string data;
    if (!name || !readResource(name.get(), data)) return refuse(request, path);

    ObjectRef<GInputStream> stream(g_memory_input_stream_new_from_data(
        g_memdup2(data.data(), data.size()), static_cast<gssize>(data.size()), g_free));
    const ObjectRef<WebKitURISchemeResponse> response(
        webkit_uri_scheme_response_new(stream.get(), static_cast<gint64>(data.size())));
    webkit_uri_scheme_response_set_content_type(response.get(), mimeType(name.get(), data).get());
    webkit_uri_scheme_response_set_http_headers(response.get(), openToPages());
    webkit_uri_scheme_request_finish_with_response(request, response.get());
}

// True also for one that does not exist. One that is a file, or that lies where this user may not look, is
// none.
bool mayBeFolder(const char* path) {
    return access((std::string(path) + "/.").c_str(), F_OK) == 0 || errno == ENOENT;
}

// A full folder takes no file of this size.
bool takesFiles(const std::string& folder) {
    constexpr std::size_t kSize = 64 << 10;
    std::string path = folder + "/tellmar-try-XXXXXX";
    const FileDescriptor file(mkstemp(path.data()));
    if (!file.isOpen()) return false;
    unlink(path.c_str());
    return write(file.number(), std::string(kSize, ' ').data(), kSize) == static_cast<ssize_t>(kSize);
}

// The sandbox brings in parts of the first four, and keeps notes in the last.
bool sandboxFindsFolders() {
    return mayBeFolder(g_get_home_dir()) && mayBeFolder(g_get_user_config_dir()) &&
           mayBeFolder(g_get_user_data_dir()) && mayBeFolder(g_get_user_cache_dir()) &&
           takesFiles(g_get_user_runtime_dir());
}

// WebKit ends the whole program when its sandbox cannot start, so what it needs is tried before.
bool sandboxWorks() {
    if (!sandboxFindsFolders()) return false;
    if (!GText(g_find_program_in_path("xdg-dbus-proxy"))) return false;
    const char* const command[] = {
        "bwrap",         "--ro-bind",     "/",    "/",    "--proc", "/proc", "--dev", "/dev", "--unshare-pid",
        "--unshare-net", "--unshare-uts", "true", nullptr};
    int status = 1;
    const bool ran = g_spawn_sync(nullptr, const_cast<char**>(command), nullptr,
                                  static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL |
                                                           G_SPAWN_STDERR_TO_DEV_NULL),
                                  nullptr, nullptr, nullptr, nullptr, &status, nullptr);
    return ran && g_spawn_check_wait_status(status, nullptr);
}

// WebKit describes each sandbox in a folder of its own and leaves it behind when the program ends.
struct SandboxFolders {
    ~SandboxFolders() {
        const std::string prefix = "webkit-" + std::to_string(getpid()) + "-";
        std::error_code error;
        for (const auto& entry :
             std::filesystem::directory_iterator(std::string(g_get_user_runtime_dir()) + "/.flatpak", error))
            if (entry.path().filename().string().starts_with(prefix))
                std::filesystem::remove_all(entry.path(), error);
    }
};

// No content policy keeps a page's <link rel="preconnect"> from opening a connection. There is no such kind
// of proxy.
void refuseNetwork(WebKitWebContext* context) {
    const Handle<WebKitNetworkProxySettings, webkit_network_proxy_settings_free> settings(
        webkit_network_proxy_settings_new("refuse://everything", nullptr));
    webkit_website_data_manager_set_network_proxy_settings(
        webkit_web_context_get_website_data_manager(context), WEBKIT_NETWORK_PROXY_MODE_CUSTOM,
        settings.get());
}

WebKitWebContext* makeContext() {
    static const SandboxFolders removedAtExit;
    WebKitWebContext* context = webkit_web_context_new_ephemeral();
    webkit_web_context_set_cache_model(context, WEBKIT_CACHE_MODEL_DOCUMENT_VIEWER);
    const bool isSandboxed = sandboxWorks();
    if (isSandboxed) replaceLostBuses();
    webkit_web_context_set_sandbox_enabled(context, isSandboxed);
    refuseNetwork(context);
    webkit_web_context_register_uri_scheme(context, kScheme, serveResource, nullptr, nullptr);
    WebKitSecurityManager* security = webkit_web_context_get_security_manager(context);
    webkit_security_manager_register_uri_scheme_as_secure(security, kScheme);
    webkit_security_manager_register_uri_scheme_as_cors_enabled(security, kScheme);
    g_signal_connect(context, "download-started",
                     G_CALLBACK(+[](WebKitWebContext*, WebKitDownload* download, gpointer) {
                         webkit_download_cancel(download);
                     }),
                     nullptr);
    return context;
}

}  // namespace

WebKitWebContext* webContext() {
    static WebKitWebContext* context = makeContext();
    return context;
}

}  // namespace platform
