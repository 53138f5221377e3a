var VObjectUndoStack_8h =
[
    [ "VFoundation::VObjectUndoStack", "classVFoundation_1_1VObjectUndoStack.html", "classVFoundation_1_1VObjectUndoStack" ]
];