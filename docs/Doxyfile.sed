# The links of the documents, as they stand in the API reference: to a header's page there, and as
# plain text to a file that it does not hold.
s#\[`([^`]+)`\]\((\.\./)?include/zav/([A-Za-z0-9]+\.h)\)#[\1](@ref \3)#g
s#\]\((\.\./)?README\.md[^)]*\)#](index.html)#g
s#\[([^]]+)\]\((\.\./)?(db|examples|tests)/[^)]*\)#\1#g

# A heading gets the name by which a link on its page means it: in lower case, with hyphens. But for
# "Index", which is the name of the first page.
/^##+ Index$/b
/^##+ [A-Za-z -]+$/ {
    h
    s/^#+ //
    s/ /-/g
    s/.*/ {#\L&}/
    x
    G
    s/\n//
}
