# Read by CTest behind the list of the tests, so that the slow one can be left out with -LE slow.
set_tests_properties(logfile.StuckLog.SlowIsGivenUpAndItsThreadStillHasWhatItNeeds PROPERTIES LABELS slow)
