# The documentation of the interface in HTML, from the comments in the public headers: target `docs`. Headers of the
# kernel that only compilers need are left out, and the macros of rows.h expanded to what they declare.

find_package(Doxygen)
if(NOT DOXYGEN_FOUND)
    return()
endif()

foreach(library TraceKit TallyBase Velmara)
    get_target_property(of_library ${library} HEADER_SET)
    list(APPEND headers ${of_library})
endforeach()
list(FILTER headers EXCLUDE REGEX "/kernel/(record|model/(access|data|member|rows))\\.h$")

# The guide comes first, without its links to what is not here.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS docs/guide.md)
file(READ docs/guide.md guide)
string(REGEX REPLACE "\\[([^]]*)\\]\\([^) ]*(\\.md|#|\\.\\./)[^) ]*\\)" "\\1" guide "${guide}")
file(WRITE ${PROJECT_BINARY_DIR}/guide.md "${guide}")
set(DOXYGEN_USE_MDFILE_AS_MAINPAGE ${PROJECT_BINARY_DIR}/guide.md)

set(DOXYGEN_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
set(DOXYGEN_STRIP_FROM_PATH ${PROJECT_SOURCE_DIR})
set(DOXYGEN_INCLUDE_PATH ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/generated)
set(DOXYGEN_MACRO_EXPANSION YES)
set(DOXYGEN_PREDEFINED VELMARA_EXPORT= TALLYBASE_EXPORT= TRACEKIT_EXPORT=
    Q_DECLARE_TR_FUNCTIONS\(x\)= VELMARA_EXTERN_RECORD\(x\):=
)
set(DOXYGEN_EXCLUDE_SYMBOLS *::kernel *::kernel::*)
set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
set(DOXYGEN_DISTRIBUTE_GROUP_DOC YES)
set(DOXYGEN_HAVE_DOT NO)
set(DOXYGEN_GENERATE_TREEVIEW YES)
set(DOXYGEN_QUIET YES)
set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
doxygen_add_docs(docs ${headers} ${DOXYGEN_USE_MDFILE_AS_MAINPAGE} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
