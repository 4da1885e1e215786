# The program itself. Its shared libraries lie in a private directory beside it.
include(GNUInstallDirs)
add_executable(marrowfin main.cpp)
qt_add_resources(marrowfin marrowfin_icon PREFIX / BASE ${PROJECT_SOURCE_DIR}/packaging
    FILES ${PROJECT_SOURCE_DIR}/packaging/io.tessaly.marrowfin.svg)
target_link_libraries(marrowfin PRIVATE marrowfin_flags marrowfin_app marrowfin_session)
set_target_properties(marrowfin PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}
                      INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}/marrowfin")
