"""Orca's voice in the tests: a line for each thing it would say. SPOKEN_LINES names the file.

Orca imports this twice, as its customizations and as its factory of speech servers.
"""

import os

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi
from orca import settings, speechserver

# By default Orca drops what it wants to say when a program does not answer within 0.8 s, which a busy machine takes
# now and then. In milliseconds: for an answer, and for one of a program that has just been started.
Atspi.set_timeout(20000, 20000)
settings.speechServerFactory = __name__
# What is pressed is in the journey already. The keys that type are said, as they are by default.
settings.enableActionKeys = False
settings.enableModifierKeys = False
settings.enableSpace = False


class SpeechServer(speechserver.SpeechServer):
    _server = None

    @staticmethod
    def getFactoryName():
        return "Lines of a file"

    @staticmethod
    def getSpeechServers():
        return [SpeechServer.getSpeechServer()]

    @staticmethod
    def getSpeechServer(info=None):
        if SpeechServer._server is None:
            SpeechServer._server = SpeechServer()
        return SpeechServer._server

    @staticmethod
    def shutdownActiveServers():
        SpeechServer._server = None

    def __init__(self):
        super().__init__()
        self._lines = open(os.environ["SPOKEN_LINES"], "a", buffering=1, encoding="utf-8")

    def getInfo(self):
        return [self.getFactoryName(), "default"]

    def getVoiceFamilies(self):
        return []

    def speak(self, text=None, acss=None, interrupt=True):
        if text and text.strip():
            self._lines.write(" ".join(text.split()) + "\n")

    def speakCharacter(self, character, acss=None):
        self.speak(character)

    def speakKeyEvent(self, event, acss=None):
        self.speak(event.getKeyName() + " key")

    def sayAll(self, utteranceIterator, progressCallback):
        for context, _ in utteranceIterator:
            self.speak(context.utterance)
