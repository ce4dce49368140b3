# zd_layer(NAME SOURCES file... [LINKS library...] [HEADER_FOLDERS subfolder...])
#
# A layer of the program: a static library made of the sources in the
# calling folder, linked with the layers below it. Its headers are published
# by the paths they are included by ("game/Routines.h") under a folder of its
# own in the build tree, and only that folder is on its users' include path;
# the source tree is on none. So a layer sees exactly the headers of the
# layers it links, and an include across layers that the links do not allow
# fails to build. HEADER_FOLDERS publishes the headers of subfolders too
# (the system's own implementation, say).
function(zd_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS;HEADER_FOLDERS")
  add_library(${name} STATIC ${arg_SOURCES})
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  set(root ${PROJECT_BINARY_DIR}/layers/${name})
  file(REMOVE_RECURSE ${root}/${folder})
  foreach(sub IN ITEMS . ${arg_HEADER_FOLDERS})
    file(MAKE_DIRECTORY ${root}/${folder}/${sub})
    file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${sub}/*.h)
    foreach(header IN LISTS headers)
      get_filename_component(file ${header} NAME)
      file(CREATE_LINK ${header} ${root}/${folder}/${sub}/${file} SYMBOLIC)
    endforeach()
  endforeach()
  target_include_directories(${name} PUBLIC ${root})
  target_link_libraries(${name} PUBLIC ${arg_LINKS})
  set(ZD_LAYER_ROOT ${root} PARENT_SCOPE)
endfunction()
