# The pictures as resources: bitmaps NAME-WIDTH, and the icon.
find_program(CONVERT convert REQUIRED)
find_program(ICOTOOL icotool REQUIRED)

set(resources "OSTREVIN ICON \"ostrevin.ico\"\n")
# bitmap(NAME WIDTH COMMAND...): makes NAME-WIDTH.bmp of NAME-WIDTH.png.
function(bitmap name width)
    set(output ${name}-${width})
    render(${name} ${output} ${width})
    list(GET ARGN 0 maker)
    add_custom_command(OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${output}.bmp COMMAND ${ARGN}
        DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/${output}.png ${maker} VERBATIM)
    string(TOUPPER ${output} id)
    set(files ${files} ${CMAKE_CURRENT_BINARY_DIR}/${output}.bmp PARENT_SCOPE)
    set(resources "${resources}${id} RCDATA \"${output}.bmp\"\n" PARENT_SCOPE)
endfunction()

# With an alpha channel: 32 bits a point.
macro(transparent_bitmap name width)
    bitmap(${name} ${width} ${CMAKE_CURRENT_SOURCE_DIR}/png-to-bitmap ${name}-${width}.png ${name}-${width}.bmp)
endmacro()
# As they are drawn at 96, 120, 144 and 192 dots per inch.
foreach(name IN LISTS listPictures)
    foreach(size 16 20 24 32)
        transparent_bitmap(${name} ${size})
    endforeach()
endforeach()
foreach(name IN LISTS toolbarPictures)
    foreach(size 24 30 36 48)
        transparent_bitmap(${name} ${size})
    endforeach()
endforeach()
transparent_bitmap(logo 96)
transparent_bitmap(logo 144)

# The splash picture fills its window. With run-length encoding it is a tenth as large.
foreach(width 420 630)
    bitmap(splash ${width} ${CONVERT} splash-${width}.png -strip -alpha remove +dither -colors 256
        -compress RLE BMP3:splash-${width}.bmp)
endforeach()

# The sizes that Windows 2000 and XP draw are bitmaps; only later systems look for the large one, as PNG.
set(small "")
set(large "")
set(icons "")
foreach(size 16 24 32 48 64 256)
    render(ostrevin ostrevin-${size} ${size})
    list(APPEND icons ${CMAKE_CURRENT_BINARY_DIR}/ostrevin-${size}.png)
    if(size GREATER 64)
        list(APPEND large --raw=ostrevin-${size}.png)
    else()
        list(APPEND small ostrevin-${size}.png)
    endif()
endforeach()
set(icon ${CMAKE_CURRENT_BINARY_DIR}/ostrevin.ico)
add_custom_command(OUTPUT ${icon}
    COMMAND ${ICOTOOL} --create --output=ostrevin.ico ${small} ${large}
    DEPENDS ${icons} VERBATIM)
list(APPEND files ${icon})
set(PICTURE_RESOURCES ${resources} PARENT_SCOPE)
