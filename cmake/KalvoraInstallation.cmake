# Programs and delivered data stand in one folder (the programs look beside themselves), with
# links from <prefix>/bin. The tools stay in the build tree: the scrambling keeps the curious out,
# and kalvora-klartext on every workstation would let them in.

set(ordner "lib/kalvora")

foreach(programm kalvora kalvora-konsole)
    if(TARGET ${programm})
        install(TARGETS ${programm} RUNTIME DESTINATION "${ordner}")
        install(CODE "
            set(bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin\")
            file(MAKE_DIRECTORY \"\${bin}\")
            file(CREATE_LINK \"../${ordner}/${programm}\" \"\${bin}/${programm}\" SYMBOLIC)")
    endif()
endforeach()
if(KALVORA_DATEN)
    install(FILES ${KALVORA_DATEN} DESTINATION "${ordner}")
endif()
