# Installs the build into a scratch prefix and builds and runs examples/embed against it, as an
# application would: once through find_package, once through pkg-config.
#
#   cmake -DBUILD_DIR= -DLIBDIR= -DSOURCE_DIR= -DSCRATCH= -DCXX= -DCXX_FLAGS= -P package_test.cmake

set(prefix ${SCRATCH}/prefix)
separate_arguments(flags UNIX_COMMAND "${CXX_FLAGS}")

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ECHO STDOUT COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${SCRATCH})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

# The program must find the shared library and nothing of this project but what was installed.
set(ENV{LD_LIBRARY_PATH} ${prefix}/${LIBDIR})
set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)

run(${CMAKE_COMMAND} -G Ninja -S ${SOURCE_DIR} -B ${SCRATCH}/embed -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
run(${CMAKE_COMMAND} --build ${SCRATCH}/embed)
run(${SCRATCH}/embed/embed)
# The library of pictures may have been left out.
if(EXISTS ${SCRATCH}/embed/picture)
    run(${SCRATCH}/embed/picture)
endif()

execute_process(COMMAND pkg-config --cflags --libs orvane-schedule
    OUTPUT_VARIABLE package COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(package UNIX_COMMAND "${package}")
run(${CXX} -std=c++20 ${flags} ${SOURCE_DIR}/main.cpp ${package} -o ${SCRATCH}/embed_by_pkg_config)
run(${SCRATCH}/embed_by_pkg_config)
