# Read by CTest after the list of the tests. The slow one starts first, so that the others run beside it; it can be
# left out with -LE slow.
set_tests_properties(log.VLogFileStuck.SlowIsGivenUpAndItsThreadStillHasWhatItNeeds PROPERTIES LABELS slow
    COST 1000)
