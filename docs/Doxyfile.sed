# The links of the documents, as they stand in the API reference: to a header's page there, and as
# plain text to a file that it does not hold.
s#\[`([^`]+)`\]\((\.\./)?include/zav/([A-Za-z0-9]+\.h)\)#[\1](@ref \3)#g
s#\]\((\.\./)?README\.md[^)]*\)#](index.html)#g
s#\[([^]]+)\]\((\.\./)?(db|examples)/[^)]*\)#\1#g
