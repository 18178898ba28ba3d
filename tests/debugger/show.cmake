# Compares what gdb shows of the variables of a program with what is expected.
execute_process(COMMAND ${GDB} -nx -batch -ex "source ${PRINTERS}" -ex run -ex "info locals" ${PROGRAM}
                OUTPUT_VARIABLE shown ERROR_VARIABLE errors)
file(READ ${CMAKE_CURRENT_LIST_DIR}/expected.txt expected)
string(FIND "${shown}" "${expected}" at)
if(at EQUAL -1)
    message(FATAL_ERROR "expected:\n${expected}gdb printed:\n${shown}${errors}")
endif()
