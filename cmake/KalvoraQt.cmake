# The windows. Qt 6 is found, not demanded: without it core and console are built alone.

set(KALVORA_MIT_QT OFF)
if(NOT KALVORA_QT STREQUAL "OFF")
    if(KALVORA_QT STREQUAL "ON")
        find_package(Qt6 REQUIRED COMPONENTS Widgets PrintSupport)
    else()
        find_package(Qt6 QUIET COMPONENTS Widgets PrintSupport)
    endif()
    if(Qt6Widgets_FOUND AND Qt6PrintSupport_FOUND)
        set(KALVORA_MIT_QT ON)
        find_package(Qt6 QUIET COMPONENTS Test)
    else()
        message(STATUS "Qt 6 (Widgets, PrintSupport) not found: no windows, console only")
    endif()
endif()

if(KALVORA_MIT_QT)
    set(qt_ordner "${CMAKE_SOURCE_DIR}/src/ui/qt")
    file(GLOB_RECURSE qt_quellen CONFIGURE_DEPENDS "${qt_ordner}/*.cpp")
    file(GLOB_RECURSE qt_koepfe CONFIGURE_DEPENDS "${qt_ordner}/*.h")
    file(GLOB_RECURSE qt_formulare CONFIGURE_DEPENDS "${qt_ordner}/*.ui")
    # Resources are compiled into the programs, not into the library: a linker drops a static
    # library's resource object, since nothing refers to it.
    file(GLOB_RECURSE KALVORA_QT_RESSOURCEN CONFIGURE_DEPENDS "${qt_ordner}/*.qrc")

    if(qt_quellen)
        set(form_ordner "")
        foreach(formular IN LISTS qt_formulare)
            get_filename_component(ordner "${formular}" DIRECTORY)
            list(APPEND form_ordner "${ordner}")
        endforeach()
        list(REMOVE_DUPLICATES form_ordner)

        kalvora_bibliothek(kalvora_qt "${qt_quellen}" kalvora_kern)
        target_sources(kalvora_qt PRIVATE ${qt_koepfe} ${qt_formulare})
        set_target_properties(kalvora_qt PROPERTIES
            AUTOMOC ON AUTOUIC ON AUTOUIC_SEARCH_PATHS "${form_ordner}"
            AUTOGEN_BUILD_DIR "${CMAKE_BINARY_DIR}/kalvora_qt_autogen")
        target_include_directories(kalvora_qt SYSTEM PUBLIC "${CMAKE_BINARY_DIR}/kalvora_qt_autogen/include")
        target_link_libraries(kalvora_qt PUBLIC Qt6::Widgets Qt6::PrintSupport)

        kalvora_programm(kalvora src/app/kalvora_main.cpp kalvora_qt kalvora_kern)
        if(TARGET kalvora)
            target_sources(kalvora PRIVATE ${KALVORA_QT_RESSOURCEN})
            set_target_properties(kalvora PROPERTIES AUTORCC ON)
        endif()
    endif()
endif()
