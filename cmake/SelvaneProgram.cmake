# selvane_scene(TARGET source...): adds whole programs to a target, each in a namespace named as its
# file, so that one program may call the main() of many, and what it plays is what a reader reads.
# Their includes come first, outside of the namespaces.
function(selvane_scene target)
  foreach(source IN LISTS ARGN)
    cmake_path(ABSOLUTE_PATH source NORMALIZE)
    cmake_path(GET source STEM name)
    file(STRINGS ${source} includes REGEX "^#include")
    list(JOIN includes "\n" includes)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
    set(scene ${CMAKE_CURRENT_BINARY_DIR}/scenes/${name}.cpp)
    file(CONFIGURE OUTPUT ${scene}
         CONTENT "${includes}\n\nnamespace ${name} {\n#include \"${source}\"\n}\n" @ONLY)
    set_property(SOURCE ${scene} APPEND PROPERTY OBJECT_DEPENDS ${source})
    target_sources(${target} PRIVATE ${scene})
  endforeach()
endfunction()
