# Every library that the project is built on, all from Debian's packages (script/bootstrap).
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)

# The host's rooms.
find_package(ICU 72 REQUIRED COMPONENTS uc i18n)

# The language models.
find_package(Boost 1.81 REQUIRED COMPONENTS json)
pkg_check_modules(CURL REQUIRED IMPORTED_TARGET libcurl)

# The Linux desktop.
pkg_check_modules(GIO REQUIRED IMPORTED_TARGET gio-2.0)
pkg_check_modules(GTKMM REQUIRED IMPORTED_TARGET gtkmm-3.0)
pkg_check_modules(SESSION REQUIRED IMPORTED_TARGET sm ice)
pkg_check_modules(X11 REQUIRED IMPORTED_TARGET x11 xext xtst xfixes xi xres xkbcommon)
pkg_check_modules(CANBERRA REQUIRED IMPORTED_TARGET libcanberra)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb xcb-xfixes xcb-sync x11-xcb)

# The interface that comes with the host. It also needs dtl, which has headers only.
pkg_check_modules(HUNSPELL REQUIRED IMPORTED_TARGET hunspell)
pkg_check_modules(APPINDICATOR REQUIRED IMPORTED_TARGET ayatana-appindicator3-0.1)

# Tests, benchmarks and the demonstration.
if(BUILD_TESTING OR QUILLMARK_DEMO)
    pkg_check_modules(PIXBUF REQUIRED IMPORTED_TARGET gdk-pixbuf-2.0)
endif()
if(BUILD_TESTING)
    find_package(GTest REQUIRED)
    find_package(benchmark REQUIRED)
endif()
