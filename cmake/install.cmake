# What `cmake --install` copies, in three components: runtime, dev and tools.

include(CMakePackageConfigHelpers)

set(velmara_includedir ${CMAKE_INSTALL_INCLUDEDIR}/velmara)
set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Velmara)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
# Laid out as the tree is, so that the links between the documents hold.
set(doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/velmara)

install(TARGETS Velmara TallyBase TraceKit EXPORT VelmaraTargets
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT dev
    FILE_SET HEADERS DESTINATION ${velmara_includedir} COMPONENT dev
    FILE_SET generated DESTINATION ${velmara_includedir} COMPONENT dev
)
install(EXPORT VelmaraTargets NAMESPACE Velmara:: DESTINATION ${config_dir} COMPONENT dev)
write_basic_package_version_file(VelmaraConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES cmake/VelmaraConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/VelmaraConfigVersion.cmake
    DESTINATION ${config_dir} COMPONENT dev
)

file(RELATIVE_PATH prefix_from_pkgconfig /${pkgconfig_dir} /)
configure_file(cmake/velmara.pc.in velmara.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/velmara.pc DESTINATION ${pkgconfig_dir} COMPONENT dev)
install(FILES examples/CMakeLists.txt examples/client.cpp examples/guide.cpp DESTINATION ${doc_dir}/examples COMPONENT dev)

# Where gdb looks for what belongs to the library.
install(FILES tools/gdb/velmara.py COMPONENT dev
    DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR}
    RENAME libVelmara.so.${PROJECT_VERSION}-gdb.py
)

install(TARGETS velmara COMPONENT tools)
configure_file(tools/velmara/velmara.1.in velmara.1 @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/velmara.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
install(FILES tools/velmara/completion.bash RENAME velmara
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions COMPONENT tools)
install(FILES README.md DESTINATION ${doc_dir} COMPONENT tools)
foreach(document guide guarantees debugging performance) # for programmers
    install(FILES docs/${document}.md DESTINATION ${doc_dir}/docs COMPONENT dev)
    list(APPEND other_documents PATTERN ${document}.md EXCLUDE)
endforeach()
install(DIRECTORY docs DESTINATION ${doc_dir} COMPONENT tools ${other_documents})
install(DIRECTORY examples DESTINATION ${doc_dir} COMPONENT tools FILES_MATCHING PATTERN *.csv PATTERN *.xml)
