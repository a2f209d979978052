"""What the tests have found."""


class Failure(Exception):
    """Something that does not go as it has to."""


def expect(holds, what):
    if not holds:
        raise Failure(what)
