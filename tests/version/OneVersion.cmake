# Holds the version number of the build against those in the change log and the AppStream data: the newest entry of each
# is the program's. Usage: cmake -DVERSION=1.2.3 -DSOURCE=FOLDER -P OneVersion.cmake

function(expect_newest file pattern)
    file(READ "${SOURCE}/${file}" text)
    if(NOT text MATCHES "${pattern}")
        message(FATAL_ERROR "${file} has no version")
    elseif(NOT CMAKE_MATCH_1 STREQUAL VERSION)
        message(FATAL_ERROR "${file} begins with version ${CMAKE_MATCH_1}, the build is ${VERSION}")
    endif()
endfunction()

expect_newest(CHANGELOG.md "\n## ([0-9.]+)")
expect_newest(packaging/org.vorn.Utility.metainfo.xml "<release version=\"([0-9.]+)\"")
