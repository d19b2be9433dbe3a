# The Python package, where a Python has what it takes; ZENT_HAS_PYTHON tells. -DPython_EXECUTABLE=... chooses one.
set(ZENT_HAS_PYTHON OFF)
if(ZENT_BUILD_PYTHON AND NOT ZENT_MAYA_DEVKIT) # it takes a table from zentcheck
    # The first one in the path need not be the one that the system's packages are for.
    find_program(ZENT_PATH_PYTHON python3)
    foreach(candidate IN ITEMS "${ZENT_PATH_PYTHON}" /usr/bin/python3)
        if(NOT Python_EXECUTABLE AND EXISTS "${candidate}")
            execute_process(COMMAND "${candidate}" -c "import numpy, sysconfig; print(sysconfig.get_path('include'))"
                            RESULT_VARIABLE status OUTPUT_VARIABLE include OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
            if(status EQUAL 0)
                set(Python_EXECUTABLE "${candidate}")
                set(Python_INCLUDE_DIR "${include}") # a search could find those of another one
            endif()
        endif()
    endforeach()
    set(components Interpreter Development.Module NumPy)
    if(SKBUILD) # pip builds in an environment of its own; numpy is needed to run only
        list(REMOVE_ITEM components NumPy)
    endif()
    find_package(Python 3.9 QUIET COMPONENTS ${components})
    if(Python_FOUND)
        find_package(pybind11 2.10 CONFIG QUIET)
    endif()
    if(Python_FOUND AND pybind11_FOUND)
        set(ZENT_HAS_PYTHON ON)
        add_subdirectory(python)
    elseif(SKBUILD)
        message(FATAL_ERROR "The Python package needs Python 3.9 with its headers, and pybind11 2.10.")
    else()
        message(STATUS "The Python package is not built: it needs pybind11-dev, python3-dev and python3-numpy.")
    endif()
endif()
