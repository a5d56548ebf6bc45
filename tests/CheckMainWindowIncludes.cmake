# Fails when a file of the forms includes the main window's header although it
# is none of the window's own files (FrmMain*.cpp) or the form catalogue, which
# builds the window. The window's parts and the dialogs reach it through
# MainWindowShell and MainWindowAccess.
file(GLOB_RECURSE files "${DIR}/*.h" "${DIR}/*.cpp")
set(offenders "")
foreach(f IN LISTS files)
    get_filename_component(name "${f}" NAME)
    if(name MATCHES "^FrmMain[A-Za-z]*\\.cpp$" OR name STREQUAL "FormCatalogue.cpp")
        continue()
    endif()
    file(STRINGS "${f}" hits REGEX "^[ \t]*#[ \t]*include[ \t]*\"ui/mainwindow/FrmMain\\.h\"")
    if(hits)
        list(APPEND offenders "${f}")
    endif()
endforeach()
if(offenders)
    message(FATAL_ERROR "These files include FrmMain.h; give them MainWindowShell, "
                        "MainWindowAccess or a part instead:\n${offenders}")
endif()
