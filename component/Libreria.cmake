# libNorvelRicerca.so: every folder in one library, and what a host needs to build against it.

# Whole folders, not what happens to be referred to: a host may use any part that is marked NR_API, and the
# window makes itself known when the library is loaded. A new folder of code joins the list.
set(folders nr_runtime nr_adodb nr_spreadsheet nr_data_control nr_controls nr_grid_model nr_grid nr_session nr_query nr_output nr_viste nr_configura
            nr_finestra_ricerca nr_search_window nr_component)
add_library(NorvelRicerca SHARED)
add_library(NorvelRicerca::NorvelRicerca ALIAS NorvelRicerca)
foreach(folder ${folders})
  get_target_property(kind ${folder} TYPE)
  if(NOT kind STREQUAL "INTERFACE_LIBRARY") # a folder of headers only
    target_sources(NorvelRicerca PRIVATE $<TARGET_OBJECTS:${folder}>)
  endif()
endforeach()
# The window toolkit, ICU and SQLite are the library's own business: hosts link the library alone.
target_link_libraries(NorvelRicerca PRIVATE ${folders})
target_include_directories(NorvelRicerca INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
  $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/include>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/NorvelRicerca>)
# The headers are C++20, which a host's compiler may not take by itself; a host in C includes the C ones.
target_compile_features(NorvelRicerca INTERFACE cxx_std_20)
if(NOT WIN32)
  set(exported ${PROJECT_SOURCE_DIR}/cmake/NorvelRicerca.map)
  target_link_options(NorvelRicerca PRIVATE -Wl,--version-script=${exported} -Wl,-z,defs)
  set_target_properties(NorvelRicerca PROPERTIES LINK_DEPENDS ${exported})
endif()
set_target_properties(NorvelRicerca PROPERTIES
  LINKER_LANGUAGE CXX
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR})

# --- installation; components: libreria (to run hosts), sviluppo (to build them) ---

install(TARGETS NorvelRicerca EXPORT NorvelRicercaTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT libreria NAMELINK_COMPONENT sviluppo)

# The public headers keep the tree of folders, since they include each other by it.
set(public_headers
  component/DatiHost.h component/NorvelRicercaC.h component/Ricerca.h component/TabellaMembri.h
  component/Versione.h
  platform/adodb/Constants.h platform/adodb/Recordset.h
  platform/runtime/Api.h platform/runtime/Decimal.h platform/runtime/Errore.h
  platform/runtime/Formats.h platform/runtime/MessageBox.h platform/runtime/OwnerQueue.h
  platform/runtime/Variant.h)
set(headers_destination ${CMAKE_INSTALL_INCLUDEDIR}/NorvelRicerca)
foreach(header ${public_headers})
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${PROJECT_SOURCE_DIR}/${header} DESTINATION ${headers_destination}/${folder}
          COMPONENT sviluppo)
endforeach()
install(FILES include/NorvelRicerca/NorvelRicerca.h DESTINATION ${headers_destination}
        COMPONENT sviluppo)

include(CMakePackageConfigHelpers)
set(package_destination ${CMAKE_INSTALL_LIBDIR}/cmake/NorvelRicerca)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/NorvelRicercaConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/NorvelRicercaConfig.cmake INSTALL_DESTINATION ${package_destination})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/NorvelRicercaConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/NorvelRicercaConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/NorvelRicercaConfigVersion.cmake
        DESTINATION ${package_destination} COMPONENT sviluppo)
install(EXPORT NorvelRicercaTargets NAMESPACE NorvelRicerca:: DESTINATION ${package_destination}
        COMPONENT sviluppo)

# The .pc file finds its prefix from where it lies, so that an installation can be moved.
set(pkgconfig_destination ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH pkgconfig_to_prefix /${pkgconfig_destination} /)
string(REGEX REPLACE "/$" "" pkgconfig_to_prefix "${pkgconfig_to_prefix}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/norvelricerca.pc.in
               ${CMAKE_CURRENT_BINARY_DIR}/norvelricerca.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/norvelricerca.pc DESTINATION ${pkgconfig_destination}
        COMPONENT sviluppo)
