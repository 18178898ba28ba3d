! Calls the functions whose names end in an underscore: arguments by reference, fields without a
! terminator, and the length that the compiler passes behind them by value.
program fortran_caller
    implicit none
    character(len=12) :: field
    real :: value
    integer :: consumed
    integer, external :: str_tofloat
    external :: tolower, toupper, getdatestr, gettimestr

    field = 'Metal1 M2'
    call toupper(field, 6)
    call check(field == 'METAL1 M2', 'toupper, whole letters of the first six')
    call tolower(field, 99)
    call check(field == 'metal1 m2', 'tolower, the length of the field is the limit')

    consumed = str_tofloat('  -1.5K' // char(0), value)
    call check(consumed == 7 .and. value == -1500.0, 'str_tofloat')
    consumed = str_tofloat('none' // char(0), value)
    call check(consumed == 0 .and. value == -1500.0, 'str_tofloat of no number')

    field = '############'
    call getdatestr(field)
    call check(field(3:3) == '-' .and. field(7:7) == '-' .and. field(10:) == '###', 'getdatestr')
    call gettimestr(field(2:))
    call check(field(4:4) == ':' .and. field(7:7) == ':' .and. field(10:) == '###', 'gettimestr')

contains

    subroutine check(ok, what)
        logical, intent(in) :: ok
        character(len=*), intent(in) :: what
        if (.not. ok) error stop what
    end subroutine check

end program fortran_caller
